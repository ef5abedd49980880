// A dialog template in memory, in the font of the system's messages.
#pragma once

#include <windows.h>

#include <vector>

#include "host/text.h"

class DialogTemplate {
public:
    // Width and height in dialog units; Controls is how many follow.
    DialogTemplate(TextView Title, short Width, short Height, WORD Controls);

    // Area in dialog units. Class is the name of a window class ("Button", "Edit", "Static", ...).
    void Control(TextView Class, WORD Id, DWORD Style, TextView Caption, const RECT& Area);

    const DLGTEMPLATE* Get() const noexcept;

private:
    void AppendFont();
    void Append(const void* Data, std::size_t Size);
    void Word(WORD Value);
    void Text(TextView Value);

    std::vector<unsigned char> Bytes;
};
