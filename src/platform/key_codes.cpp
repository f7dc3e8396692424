#include "platform/key_codes.h"

#include <SDL.h>

namespace {

/// Keys that have the same name in every layout, under which SDL hides their place.
struct FunctionKey {
    SDL_Keycode symbol;
    BYTE code;
};
constexpr FunctionKey functionKeys[] = {
    {SDLK_CLEAR, 0x0C},        {SDLK_LSHIFT, 0x10},      {SDLK_RSHIFT, 0x10},     {SDLK_LCTRL, 0x11},
    {SDLK_RCTRL, 0x11},        {SDLK_LALT, 0x12},        {SDLK_RALT, 0x12},       {SDLK_MODE, 0x12},
    {SDLK_PAUSE, 0x13},        {SDLK_CAPSLOCK, 0x14},    {SDLK_PAGEUP, 0x21},     {SDLK_PAGEDOWN, 0x22},
    {SDLK_END, 0x23},          {SDLK_HOME, 0x24},        {SDLK_LEFT, 0x25},       {SDLK_UP, 0x26},
    {SDLK_RIGHT, 0x27},        {SDLK_DOWN, 0x28},        {SDLK_SELECT, 0x29},     {SDLK_EXECUTE, 0x2B},
    {SDLK_PRINTSCREEN, 0x2C},  {SDLK_INSERT, 0x2D},      {SDLK_HELP, 0x2F},       {SDLK_LGUI, 0x5B},
    {SDLK_RGUI, 0x5C},         {SDLK_APPLICATION, 0x5D}, {SDLK_MENU, 0x5D},       {SDLK_SLEEP, 0x5F},
    {SDLK_NUMLOCKCLEAR, 0x90}, {SDLK_SCROLLLOCK, 0x91},  {SDLK_AC_BACK, 0xA6},    {SDLK_AC_FORWARD, 0xA7},
    {SDLK_AC_REFRESH, 0xA8},   {SDLK_AC_STOP, 0xA9},     {SDLK_AC_SEARCH, 0xAA},  {SDLK_AC_BOOKMARKS, 0xAB},
    {SDLK_AC_HOME, 0xAC},      {SDLK_AUDIOMUTE, 0xAD},   {SDLK_VOLUMEDOWN, 0xAE}, {SDLK_VOLUMEUP, 0xAF},
    {SDLK_AUDIONEXT, 0xB0},    {SDLK_AUDIOPREV, 0xB1},   {SDLK_AUDIOSTOP, 0xB2},  {SDLK_AUDIOPLAY, 0xB3},
    {SDLK_MAIL, 0xB4},         {SDLK_MEDIASELECT, 0xB5}, {SDLK_APP1, 0xB6},       {SDLK_APP2, 0xB7},
    {SDLK_CRSEL, 0xF7},        {SDLK_EXSEL, 0xF8}};

/// Keys by what the layout makes of them, or by their place where it makes nothing known of it.
struct SignKey {
    SDL_Keycode symbol;
    SDL_Scancode place;
    BYTE code;
};
constexpr SignKey signKeys[] = {{SDLK_BACKSPACE, SDL_SCANCODE_BACKSPACE, 0x08},
                                {SDLK_TAB, SDL_SCANCODE_TAB, 0x09},
                                {SDLK_RETURN, SDL_SCANCODE_RETURN, 0x0D},
                                {SDLK_ESCAPE, SDL_SCANCODE_ESCAPE, 0x1B},
                                {SDLK_SPACE, SDL_SCANCODE_SPACE, 0x20},
                                {SDLK_DELETE, SDL_SCANCODE_DELETE, 0x2E},
                                {SDLK_SEMICOLON, SDL_SCANCODE_SEMICOLON, 0xBA},
                                {SDLK_EQUALS, SDL_SCANCODE_EQUALS, 0xBB},
                                {SDLK_PLUS, SDL_SCANCODE_EQUALS, 0xBB},
                                {SDLK_COMMA, SDL_SCANCODE_COMMA, 0xBC},
                                {SDLK_MINUS, SDL_SCANCODE_MINUS, 0xBD},
                                {SDLK_PERIOD, SDL_SCANCODE_PERIOD, 0xBE},
                                {SDLK_SLASH, SDL_SCANCODE_SLASH, 0xBF},
                                {SDLK_BACKQUOTE, SDL_SCANCODE_GRAVE, 0xC0},
                                {SDLK_LEFTBRACKET, SDL_SCANCODE_LEFTBRACKET, 0xDB},
                                {SDLK_BACKSLASH, SDL_SCANCODE_BACKSLASH, 0xDC},
                                {SDLK_HASH, SDL_SCANCODE_NONUSHASH, 0xDC},
                                {SDLK_RIGHTBRACKET, SDL_SCANCODE_RIGHTBRACKET, 0xDD},
                                {SDLK_QUOTE, SDL_SCANCODE_APOSTROPHE, 0xDE},
                                {SDLK_LESS, SDL_SCANCODE_NONUSBACKSLASH, 0xE2}};

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

BYTE CodeOfName(SDL_Keycode symbol) {
    for (const FunctionKey& key : functionKeys) {
        if (key.symbol == symbol) {
            return key.code;
        }
    }
    for (const SignKey& key : signKeys) {
        if (key.symbol == symbol) {
            return key.code;
        }
    }
    return 0;
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
    if (const BYTE code = CodeOfName(key.sym)) {
        return code;
    }
    for (const SignKey& sign : signKeys) {
        if (sign.place == key.scancode) {
            return sign.code;
        }
    }
    if (const BYTE code = CodeInRow(key.scancode, SDL_SCANCODE_A, SDL_SCANCODE_Z, 'A')) {
        return code;
    }
    return CodeOfName(SDL_SCANCODE_TO_KEYCODE(key.scancode));
}
