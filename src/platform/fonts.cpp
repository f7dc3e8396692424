#include "platform/fonts.h"

#include <GL/gl.h>
#include <fontconfig/fontconfig.h>
#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_SYNTHESIS_H

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "platform/window_record.h"
#include "platform/windows1250.h"

struct PlatformFont {
    FT_Face face = nullptr;
    bool embolden = false;  ///< the desktop has no bold face of it: the weight has to be made
};

namespace {

/// All fonts of the process.
struct Fonts {
    FT_Library freetype = nullptr;
    std::vector<std::unique_ptr<PlatformFont>> all;
    PlatformFont none;  ///< what a device context has before the first selection

    Fonts() {
        if (FT_Init_FreeType(&freetype) != 0) {
            freetype = nullptr;
        }
    }
    ~Fonts() {
        FT_Done_FreeType(freetype);  // and the faces with it
    }
    Fonts(const Fonts&) = delete;
    Fonts& operator=(const Fonts&) = delete;
};

/// The file in which the desktop finds a face, and how to use it.
struct FontFile {
    std::string path;  ///< empty: the desktop has no font at all
    int index = 0;     ///< of the face in the file
    bool embolden = false;
};

Fonts& TheFonts() {
    static Fonts fonts;
    return fonts;
}

FontFile FindFontFile(const char* faceName, int pixelSize, int weight, bool italic) {
    FontFile result;
    // A configuration of our own and not the shared one: nothing of it has to outlive the search.
    FcConfig* configuration = FcInitLoadConfigAndFonts();
    const std::string family = Windows1250ToUtf8(faceName);
    FcPattern* wanted = FcPatternCreate();
    FcPatternAddString(wanted, FC_FAMILY, reinterpret_cast<const FcChar8*>(family.c_str()));
    FcPatternAddInteger(wanted, FC_WEIGHT, FcWeightFromOpenType(weight));
    FcPatternAddInteger(wanted, FC_SLANT, italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    FcPatternAddDouble(wanted, FC_PIXEL_SIZE, pixelSize);
    FcPatternAddBool(wanted, FC_SCALABLE, FcTrue);
    FcConfigSubstitute(configuration, wanted, FcMatchPattern);
    FcDefaultSubstitute(wanted);
    FcResult matchResult = FcResultNoMatch;
    if (FcPattern* match = FcFontMatch(configuration, wanted, &matchResult)) {
        FcChar8* path = nullptr;
        if (FcPatternGetString(match, FC_FILE, 0, &path) == FcResultMatch) {
            result.path = reinterpret_cast<const char*>(path);
        }
        FcPatternGetInteger(match, FC_INDEX, 0, &result.index);
        FcBool embolden = FcFalse;
        FcPatternGetBool(match, FC_EMBOLDEN, 0, &embolden);
        result.embolden = embolden != 0;
        FcPatternDestroy(match);
    }
    FcPatternDestroy(wanted);
    if (configuration != nullptr) {
        FcConfigDestroy(configuration);
    }
    return result;
}

/// The code point of a single-byte character; 0, which no font has, for a byte without a letter.
FT_ULong CodePointOf(DWORD code) {
    if (code < 128) {
        return code;
    }
    return code < 256 ? windows1250CodePoints[code - 128] : 0;
}

/// Loads a character as a bitmap of one bit a pixel, hinted for that, into the face's glyph slot.
bool LoadCharacter(const PlatformFont& font, DWORD code) {
    const FT_UInt glyph = FT_Get_Char_Index(font.face, CodePointOf(code));
    if (FT_Load_Glyph(font.face, glyph, FT_LOAD_RENDER | FT_LOAD_TARGET_MONO) != 0) {
        return false;
    }
    if (font.embolden) {
        FT_GlyphSlot_Embolden(font.face->glyph);
    }
    return font.face->glyph->bitmap.pixel_mode == FT_PIXEL_MODE_MONO;
}

/// Draws the loaded character: OpenGL counts the rows of a bitmap from the bottom.
void DrawCharacter(const FT_GlyphSlotRec& slot, std::vector<BYTE>& rows) {
    const FT_Bitmap& bitmap = slot.bitmap;
    const std::size_t rowSize = (bitmap.width + 7) / 8;
    rows.clear();
    for (unsigned int row = bitmap.rows; row-- > 0;) {
        const BYTE* source = bitmap.buffer + static_cast<std::ptrdiff_t>(row) * bitmap.pitch;
        rows.insert(rows.end(), source, source + rowSize);
    }
    const auto below = static_cast<int>(bitmap.rows) - slot.bitmap_top;
    const float advance = static_cast<float>(slot.advance.x) / 64.0f;
    glBitmap(static_cast<GLsizei>(bitmap.width), static_cast<GLsizei>(bitmap.rows),
             static_cast<float>(-slot.bitmap_left), static_cast<float>(below), advance, 0.0f, rows.data());
}

}  // namespace

HFONT CreateFontA(int height, int /*width*/, int /*escapement*/, int /*orientation*/, int weight,
                  DWORD italic, DWORD /*underline*/, DWORD /*strikeOut*/, DWORD /*characterSet*/,
                  DWORD /*outputPrecision*/, DWORD /*clippingPrecision*/, DWORD /*quality*/,
                  DWORD /*pitchAndFamily*/, const char* faceName) {
    Fonts& fonts = TheFonts();
    const int pixelSize = std::abs(height);
    const FontFile file = FindFontFile(faceName != nullptr ? faceName : "", pixelSize, weight, italic != 0);
    if (file.path.empty()) {
        return nullptr;
    }
    auto font = std::make_unique<PlatformFont>();
    font->embolden = file.embolden;
    if (FT_New_Face(fonts.freetype, file.path.c_str(), file.index, &font->face) != 0) {
        return nullptr;
    }
    if (FT_Set_Pixel_Sizes(font->face, 0, static_cast<FT_UInt>(pixelSize)) != 0) {
        FT_Select_Size(font->face, 0);  // a font of fixed sizes: better a wrong one than none
    }
    fonts.all.push_back(std::move(font));
    return fonts.all.back().get();
}

bool LoadGlyph(HFONT font, DWORD code, Glyph& glyph) {
    if (font == nullptr || font->face == nullptr || !LoadCharacter(*font, code)) {
        return false;
    }
    const FT_GlyphSlotRec& slot = *font->face->glyph;
    glyph.width = static_cast<int>(slot.bitmap.width);
    glyph.rows = static_cast<int>(slot.bitmap.rows);
    glyph.left = slot.bitmap_left;
    glyph.top = slot.bitmap_top;
    glyph.advance = static_cast<int>(slot.advance.x / 64);
    glyph.bits = slot.bitmap.buffer;
    glyph.pitch = slot.bitmap.pitch;
    return true;
}

HFONT SelectObject(HDC deviceContext, HFONT font) {
    if (deviceContext == nullptr || font == nullptr) {
        return nullptr;
    }
    const HFONT before = deviceContext->font != nullptr ? deviceContext->font : &TheFonts().none;
    deviceContext->font = font;
    return before;
}

BOOL wglUseFontBitmapsA(HDC deviceContext, DWORD first, DWORD count, DWORD listBase) {
    // The list 0 is none: it comes from a context that could give no lists.
    if (deviceContext == nullptr || deviceContext->font == nullptr || listBase == 0) {
        return FALSE;
    }
    const PlatformFont& font = *deviceContext->font;
    if (font.face == nullptr) {
        return FALSE;
    }

    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    glPixelStorei(GL_UNPACK_SKIP_ROWS, 0);
    glPixelStorei(GL_UNPACK_SKIP_PIXELS, 0);
    glPixelStorei(GL_UNPACK_LSB_FIRST, GL_FALSE);
    std::vector<BYTE> rows;
    for (DWORD i = 0; i < count; i++) {
        glNewList(listBase + i, GL_COMPILE);
        if (LoadCharacter(font, first + i)) {
            DrawCharacter(*font.face->glyph, rows);
        }
        glEndList();
    }
    glPopClientAttrib();
    return TRUE;
}
