// The start of the plug-in.
#pragma once

// Runs once before any member of the class: paths and the two helper objects. Reports under "SubMain"; what
// could not be created stays missing, and its users fail one by one.
void SubMain() noexcept;
