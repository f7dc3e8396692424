#include "platform/key_codes.h"

#include <SDL.h>

namespace {

struct NamedKey {
    SDL_Scancode place;
    SDL_Keycode symbol;
    BYTE code;
};

constexpr NamedKey namedKeys[] = {
    {SDL_SCANCODE_BACKSPACE, SDLK_BACKSPACE, 0x08},
    {SDL_SCANCODE_TAB, SDLK_TAB, 0x09},
    {SDL_SCANCODE_CLEAR, SDLK_CLEAR, 0x0C},
    {SDL_SCANCODE_RETURN, SDLK_RETURN, 0x0D},
    {SDL_SCANCODE_LSHIFT, SDLK_LSHIFT, 0x10},
    {SDL_SCANCODE_RSHIFT, SDLK_RSHIFT, 0x10},
    {SDL_SCANCODE_LCTRL, SDLK_LCTRL, 0x11},
    {SDL_SCANCODE_RCTRL, SDLK_RCTRL, 0x11},
    {SDL_SCANCODE_LALT, SDLK_LALT, 0x12},
    {SDL_SCANCODE_RALT, SDLK_RALT, 0x12},
    {SDL_SCANCODE_MODE, SDLK_MODE, 0x12},
    {SDL_SCANCODE_PAUSE, SDLK_PAUSE, 0x13},
    {SDL_SCANCODE_CAPSLOCK, SDLK_CAPSLOCK, 0x14},
    {SDL_SCANCODE_ESCAPE, SDLK_ESCAPE, 0x1B},
    {SDL_SCANCODE_SPACE, SDLK_SPACE, 0x20},
    {SDL_SCANCODE_PAGEUP, SDLK_PAGEUP, 0x21},
    {SDL_SCANCODE_PAGEDOWN, SDLK_PAGEDOWN, 0x22},
    {SDL_SCANCODE_END, SDLK_END, 0x23},
    {SDL_SCANCODE_HOME, SDLK_HOME, 0x24},
    {SDL_SCANCODE_LEFT, SDLK_LEFT, 0x25},
    {SDL_SCANCODE_UP, SDLK_UP, 0x26},
    {SDL_SCANCODE_RIGHT, SDLK_RIGHT, 0x27},
    {SDL_SCANCODE_DOWN, SDLK_DOWN, 0x28},
    {SDL_SCANCODE_SELECT, SDLK_SELECT, 0x29},
    {SDL_SCANCODE_EXECUTE, SDLK_EXECUTE, 0x2B},
    {SDL_SCANCODE_PRINTSCREEN, SDLK_PRINTSCREEN, 0x2C},
    {SDL_SCANCODE_INSERT, SDLK_INSERT, 0x2D},
    {SDL_SCANCODE_DELETE, SDLK_DELETE, 0x2E},
    {SDL_SCANCODE_HELP, SDLK_HELP, 0x2F},
    {SDL_SCANCODE_LGUI, SDLK_LGUI, 0x5B},
    {SDL_SCANCODE_RGUI, SDLK_RGUI, 0x5C},
    {SDL_SCANCODE_APPLICATION, SDLK_APPLICATION, 0x5D},
    {SDL_SCANCODE_MENU, SDLK_MENU, 0x5D},
    {SDL_SCANCODE_SLEEP, SDLK_SLEEP, 0x5F},
    {SDL_SCANCODE_NUMLOCKCLEAR, SDLK_NUMLOCKCLEAR, 0x90},
    {SDL_SCANCODE_SCROLLLOCK, SDLK_SCROLLLOCK, 0x91},
    {SDL_SCANCODE_AC_BACK, SDLK_AC_BACK, 0xA6},
    {SDL_SCANCODE_AC_FORWARD, SDLK_AC_FORWARD, 0xA7},
    {SDL_SCANCODE_AC_REFRESH, SDLK_AC_REFRESH, 0xA8},
    {SDL_SCANCODE_AC_STOP, SDLK_AC_STOP, 0xA9},
    {SDL_SCANCODE_AC_SEARCH, SDLK_AC_SEARCH, 0xAA},
    {SDL_SCANCODE_AC_BOOKMARKS, SDLK_AC_BOOKMARKS, 0xAB},
    {SDL_SCANCODE_AC_HOME, SDLK_AC_HOME, 0xAC},
    {SDL_SCANCODE_AUDIOMUTE, SDLK_AUDIOMUTE, 0xAD},
    {SDL_SCANCODE_VOLUMEDOWN, SDLK_VOLUMEDOWN, 0xAE},
    {SDL_SCANCODE_VOLUMEUP, SDLK_VOLUMEUP, 0xAF},
    {SDL_SCANCODE_AUDIONEXT, SDLK_AUDIONEXT, 0xB0},
    {SDL_SCANCODE_AUDIOPREV, SDLK_AUDIOPREV, 0xB1},
    {SDL_SCANCODE_AUDIOSTOP, SDLK_AUDIOSTOP, 0xB2},
    {SDL_SCANCODE_AUDIOPLAY, SDLK_AUDIOPLAY, 0xB3},
    {SDL_SCANCODE_MAIL, SDLK_MAIL, 0xB4},
    {SDL_SCANCODE_MEDIASELECT, SDLK_MEDIASELECT, 0xB5},
    {SDL_SCANCODE_APP1, SDLK_APP1, 0xB6},
    {SDL_SCANCODE_APP2, SDLK_APP2, 0xB7},
    {SDL_SCANCODE_SEMICOLON, SDLK_SEMICOLON, 0xBA},
    {SDL_SCANCODE_EQUALS, SDLK_EQUALS, 0xBB},
    {SDL_SCANCODE_EQUALS, SDLK_PLUS, 0xBB},
    {SDL_SCANCODE_COMMA, SDLK_COMMA, 0xBC},
    {SDL_SCANCODE_MINUS, SDLK_MINUS, 0xBD},
    {SDL_SCANCODE_PERIOD, SDLK_PERIOD, 0xBE},
    {SDL_SCANCODE_SLASH, SDLK_SLASH, 0xBF},
    {SDL_SCANCODE_GRAVE, SDLK_BACKQUOTE, 0xC0},
    {SDL_SCANCODE_LEFTBRACKET, SDLK_LEFTBRACKET, 0xDB},
    {SDL_SCANCODE_BACKSLASH, SDLK_BACKSLASH, 0xDC},
    {SDL_SCANCODE_NONUSHASH, SDLK_HASH, 0xDC},
    {SDL_SCANCODE_RIGHTBRACKET, SDLK_RIGHTBRACKET, 0xDD},
    {SDL_SCANCODE_APOSTROPHE, SDLK_QUOTE, 0xDE},
    {SDL_SCANCODE_NONUSBACKSLASH, SDLK_LESS, 0xE2},
    {SDL_SCANCODE_CRSEL, SDLK_CRSEL, 0xF7},
    {SDL_SCANCODE_EXSEL, SDLK_EXSEL, 0xF8},
};

struct PadKey {
    SDL_Scancode place;
    BYTE code;                // with Num Lock on, or always
    BYTE withoutNumLock = 0;  // 0: the same
};

constexpr PadKey padKeys[] = {
    {SDL_SCANCODE_KP_0, 0x60, 0x2D}, {SDL_SCANCODE_KP_1, 0x61, 0x23},      {SDL_SCANCODE_KP_2, 0x62, 0x28},
    {SDL_SCANCODE_KP_3, 0x63, 0x22}, {SDL_SCANCODE_KP_4, 0x64, 0x25},      {SDL_SCANCODE_KP_5, 0x65, 0x0C},
    {SDL_SCANCODE_KP_6, 0x66, 0x27}, {SDL_SCANCODE_KP_7, 0x67, 0x24},      {SDL_SCANCODE_KP_8, 0x68, 0x26},
    {SDL_SCANCODE_KP_9, 0x69, 0x21}, {SDL_SCANCODE_KP_PERIOD, 0x6E, 0x2E}, {SDL_SCANCODE_KP_MULTIPLY, 0x6A},
    {SDL_SCANCODE_KP_PLUS, 0x6B},    {SDL_SCANCODE_KP_COMMA, 0x6C},        {SDL_SCANCODE_KP_MINUS, 0x6D},
    {SDL_SCANCODE_KP_DIVIDE, 0x6F},  {SDL_SCANCODE_KP_ENTER, 0x0D},        {SDL_SCANCODE_KP_EQUALS, 0x92},
};

/// The code of a key within a row that SDL and the virtual codes number alike; 0 outside of the row.
template <typename Key>
BYTE CodeInRow(Key key, Key first, Key last, BYTE firstCode) {
    return key >= first && key <= last ? static_cast<BYTE>(firstCode + (key - first)) : BYTE{0};
}

BYTE CodeInRows(SDL_Scancode place) {
    if (place == SDL_SCANCODE_0) {
        return '0';
    }
    if (const BYTE code = CodeInRow(place, SDL_SCANCODE_1, SDL_SCANCODE_9, '1')) {
        return code;
    }
    if (const BYTE code = CodeInRow(place, SDL_SCANCODE_F1, SDL_SCANCODE_F12, 0x70)) {
        return code;
    }
    return CodeInRow(place, SDL_SCANCODE_F13, SDL_SCANCODE_F24, 0x7C);
}

}  // namespace

BYTE VirtualKeyCode(const SDL_Keysym& key) {
    for (const PadKey& pad : padKeys) {
        if (pad.place != key.scancode) {
            continue;
        }
        return (key.mod & KMOD_NUM) || pad.withoutNumLock == 0 ? pad.code : pad.withoutNumLock;
    }
    if (const BYTE code = CodeInRows(key.scancode)) {
        return code;
    }
    if (const BYTE code = CodeInRow<SDL_Keycode>(key.sym, SDLK_a, SDLK_z, 'A')) {
        return code;
    }
    for (const NamedKey& named : namedKeys) {
        if (named.symbol == key.sym) {
            return named.code;
        }
    }
    if (const BYTE code = CodeInRow(key.scancode, SDL_SCANCODE_A, SDL_SCANCODE_Z, 'A')) {
        return code;
    }
    for (const NamedKey& named : namedKeys) {
        if (named.place == key.scancode) {
            return named.code;
        }
    }
    return 0;
}
