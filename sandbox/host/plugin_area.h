// The part of the host's window that holds the plug-in's: a heading, and below it the interface.
#pragma once

// Pixels; the plug-in places its window below them.
inline constexpr int CaptionHeight = 30;

inline constexpr wchar_t PluginAreaClass[] = L"SandboxPluginArea";
void RegisterPluginArea();
