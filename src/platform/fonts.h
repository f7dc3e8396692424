#pragma once

#include "platform/types.h"

// Bitmap fonts for OpenGL, from the fonts of the desktop.

inline constexpr int FW_NORMAL = 400;
inline constexpr int FW_BOLD = 700;
inline constexpr DWORD ANSI_CHARSET = 0;
inline constexpr DWORD OUT_TT_PRECIS = 4;
inline constexpr DWORD CLIP_DEFAULT_PRECIS = 0;
inline constexpr DWORD ANTIALIASED_QUALITY = 4;

/// A font of the face that comes nearest to `faceName`; the layer keeps it to the end of the process.
/// A negative height is the character height in pixels. Null only if no font file at all is found.
HFONT CreateFontA(int height, int width, int escapement, int orientation, int weight, DWORD italic,
                  DWORD underline, DWORD strikeOut, DWORD characterSet, DWORD outputPrecision,
                  DWORD clippingPrecision, DWORD quality, DWORD pitchAndFamily, const char* faceName);
/// A character as a bitmap of one bit a pixel, the highest bit of a byte on the left.
struct Glyph {
    int width = 0;
    int rows = 0;
    int left = 0;     ///< of the bitmap, to the right of the pen
    int top = 0;      ///< of the bitmap, above the base line
    int advance = 0;  ///< of the pen
    const BYTE* bits = nullptr;
    int pitch = 0;  ///< bytes from a row to the one below
};
/// Fills `glyph` with the Windows-1250 character of that code; its bits last until the font's next glyph.
/// False if the font has none.
bool LoadGlyph(HFONT font, DWORD code, Glyph& glyph);
/// Selects the font for `wglUseFontBitmapsA`; returns what was selected before (not null), or null on
/// failure: no device context or no font.
HFONT SelectObject(HDC deviceContext, HFONT font);
/// Compiles one display list per character code, from `first` on, into `listBase` and up. Each draws
/// the character at the raster position and moves that by the character's advance. 0 on failure.
BOOL wglUseFontBitmapsA(HDC deviceContext, DWORD first, DWORD count, DWORD listBase);
