#pragma once

/// The colors of one look, as "#rrggbb". Everything that the program draws in color of its own comes from
/// these few. The icon renderer takes the ink and the accent of the pictures from here as well.
struct ThemeTokens
{
    const char* name;    ///< of the folder of pictures
    const char* window;  ///< the surround of documents
    const char* panel;   ///< panels, bars, menus, dialogs
    const char* raised;  ///< what can be pressed or typed into
    const char* line;    ///< borders and separators
    const char* text;    ///< words and the ink of pictures
    const char* dimText; ///< units, hints, what is off
    const char* accent;  ///< the active tool, the selected row and the focus ring, nothing else
    const char* danger;  ///< what destroys
};

inline constexpr ThemeTokens DarkTokens = {"dark",    "#333333", "#2b2b2b", "#3d3d3d", "#1c1c1c",
                                           "#e4e4e4", "#b0b0b0", "#4f9cf0", "#ff8a80"};

inline constexpr ThemeTokens LightTokens = {"light",   "#cccccc", "#f0f0f0", "#ffffff", "#b8b8b8",
                                            "#1e1e1e", "#565656", "#1a66c2", "#b3261e"};
