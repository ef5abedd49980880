// A small dialog that asks for one line of text.
#pragma once

#include <windows.h>

#include "host/text.h"

// The text typed; empty on Cancel.
std::wstring InputBox(HWND Owner, TextView Prompt, TextView Title);
