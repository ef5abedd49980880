#include "plugin/descriptor.h"

#include "version.h"

std::wstring Descriptor::Version() {
    const std::string Text = VANTOR_VERSION_TEXT;
    return {Text.begin(), Text.end()};
}
