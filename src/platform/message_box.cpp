#include "platform/message_box.h"

#include <SDL.h>

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "platform/fonts.h"
#include "platform/key_releases.h"
#include "platform/run.h"
#include "platform/video.h"
#include "platform/window_record.h"
#include "platform/windows1250.h"
#include "process/close_request.h"
#include "process/frame_limit.h"

namespace {

int boxCount = 0;

// Pixels.
constexpr int fontSize = 15;
constexpr int lineHeight = 21;
constexpr int baseLine = 16;  // below the top of a line
constexpr int margin = 20;
constexpr int captionHeight = 30;
constexpr int longestLine = 600;
constexpr SDL_Point buttonSize{90, 30};
constexpr int heightWithoutLines = captionHeight + buttonSize.y + 3 * margin;

constexpr int mostLines = 30;  // what is longer is cut
constexpr Uint32 pause = 10;   // milliseconds between two looks at what has happened

constexpr SDL_Color paper{236, 236, 236, 255};
constexpr SDL_Color captionPaper{60, 66, 78, 255};
constexpr SDL_Color captionInk{245, 245, 245, 255};
constexpr SDL_Color ink{20, 20, 20, 255};
constexpr SDL_Color buttonPaper{210, 214, 222, 255};

/// A part of the text, without its end.
struct Line {
    const char* start = nullptr;
    const char* end = nullptr;
    int width = 0;  ///< pixels
};

// Nothing here is allocated: one of the texts says that memory has run out.
struct Box {
    SDL_Window* window = nullptr;
    HFONT font = nullptr;
    Line caption;
    Line lines[mostLines];
    int lineCount = 0;
    SDL_Rect button{};
    bool isDrawn = false;
    bool closed = false;                          ///< by its user
    SDL_Scancode keyDown = SDL_SCANCODE_UNKNOWN;  ///< pressed in the box: its release closes it
    bool buttonDown = false;                      ///< the same for the mouse
};

/// The next line of the text: all up to its end, or as many words as find room, or a part of a very long
/// word.
Line FirstLine(HFONT font, const char* text, int widest) {
    Line line{text, text, 0};
    Line words = line;  // up to the last blank
    for (; *line.end != '\0' && *line.end != '\n'; line.end++) {
        if (*line.end == ' ') {
            words = line;
        }
        Glyph glyph;
        LoadGlyph(font, static_cast<unsigned char>(*line.end), glyph);
        if (line.width + glyph.advance > widest) {
            return words.end != text ? words : line;
        }
        line.width += glyph.advance;
    }
    return line;
}

/// Breaks the text into lines for the display, and returns the size that the box then has.
SDL_Point LayOut(Box& box, const char* caption, const char* text, const SDL_Rect& display) {
    const int widest = std::max(std::min(longestLine, display.w - 2 * margin), buttonSize.x);
    const int most = std::clamp((display.h - heightWithoutLines) / lineHeight, 1, mostLines);
    box.caption = FirstLine(box.font, caption, widest);
    int width = std::max(box.caption.width, buttonSize.x);
    while (*text != '\0' && box.lineCount < most) {
        const Line line = FirstLine(box.font, text, widest);
        width = std::max(width, line.width);
        text = line.end == text || *line.end == ' ' || *line.end == '\n' ? line.end + 1 : line.end;
        box.lines[box.lineCount++] = line;
    }
    width += 2 * margin;
    const int height = heightWithoutLines + box.lineCount * lineHeight;
    box.button = {(width - buttonSize.x) / 2, height - margin - buttonSize.y, buttonSize.x, buttonSize.y};
    return {width, height};
}

void Fill(SDL_Surface* surface, const SDL_Rect& place, SDL_Color colour) {
    SDL_FillRect(surface, &place, SDL_MapRGB(surface->format, colour.r, colour.g, colour.b));
}

/// @param left,top of the line
void DrawLine(SDL_Surface* surface, HFONT font, const Line& line, int left, int top, SDL_Color colour) {
    for (const char* at = line.start; at != line.end; at++) {
        Glyph glyph;
        LoadGlyph(font, static_cast<unsigned char>(*at), glyph);
        for (int y = 0; y < glyph.rows; y++) {
            for (int x = 0; x < glyph.width; x++) {
                if (glyph.bits[y * glyph.pitch + x / 8] & 0x80 >> x % 8) {
                    Fill(surface, {left + glyph.left + x, top + baseLine - glyph.top + y, 1, 1}, colour);
                }
            }
        }
        left += glyph.advance;
    }
}

/// False if the display can't show it.
bool Draw(const Box& box) {
    SDL_Surface* surface = SDL_GetWindowSurface(box.window);
    if (surface == nullptr) {
        return false;
    }
    Fill(surface, {0, 0, surface->w, surface->h}, paper);
    Fill(surface, {0, 0, surface->w, captionHeight}, captionPaper);
    DrawLine(surface, box.font, box.caption, margin, (captionHeight - lineHeight) / 2, captionInk);
    for (int i = 0; i < box.lineCount; i++) {
        DrawLine(surface, box.font, box.lines[i], margin, captionHeight + margin + i * lineHeight, ink);
    }
    Fill(surface, box.button, buttonPaper);
    const Line label = FirstLine(box.font, "OK", buttonSize.x);
    DrawLine(surface, box.font, label, box.button.x + (box.button.w - label.width) / 2,
             box.button.y + (box.button.h - lineHeight) / 2, ink);
    return SDL_UpdateWindowSurface(box.window) == 0;
}

bool IsClosingKey(SDL_Keycode key) {
    return key == SDLK_RETURN || key == SDLK_KP_ENTER || key == SDLK_ESCAPE || key == SDLK_SPACE;
}

bool IsOnButton(const Box& box, const SDL_MouseButtonEvent& event) {
    const SDL_Point place{event.x, event.y};
    return SDL_PointInRect(&place, &box.button) == SDL_TRUE;
}

/// Acts on an event of the box and takes it out of SDL's queue by 0; those of other windows wait there.
int TakeEventOfBox(void* data, SDL_Event* event) {
    Box& box = *static_cast<Box*>(data);
    const bool ofAWindow =
        event->type == SDL_WINDOWEVENT || (event->type >= SDL_KEYDOWN && event->type <= SDL_MOUSEWHEEL);
    if (!ofAWindow || event->window.windowID != SDL_GetWindowID(box.window)) {
        return 1;
    }
    switch (event->type) {
        case SDL_WINDOWEVENT:
            box.isDrawn = false;
            box.closed = box.closed || event->window.event == SDL_WINDOWEVENT_CLOSE;
            break;
        case SDL_KEYDOWN:
            if (IsClosingKey(event->key.keysym.sym) && event->key.repeat == 0) {
                box.keyDown = event->key.keysym.scancode;
            }
            break;
        case SDL_KEYUP:
            box.closed = box.closed || event->key.keysym.scancode == box.keyDown;
            break;
        case SDL_MOUSEBUTTONDOWN:
            box.buttonDown = IsOnButton(box, event->button);
            break;
        case SDL_MOUSEBUTTONUP:
            box.closed = box.closed || (box.buttonDown && IsOnButton(box, event->button));
            break;
        default:
            break;
    }
    return 0;
}

/// Under Wayland SDL hears of windows that it has destroyed, and crashes. So one window, hidden meanwhile,
/// serves all boxes there. Null if there can be none.
SDL_Window* OpenWindow(const char* caption, SDL_Point size, int display) {
    constexpr const char* mark = "box";
    static Uint32 identifier = 0;
    char title[512];
    Windows1250ToUtf8(caption, title, sizeof title);
    SDL_Window* window = SDL_GetWindowFromID(identifier);
    if (window != nullptr && SDL_GetWindowData(window, mark) != nullptr) {
        SDL_SetWindowTitle(window, title);
        SDL_SetWindowSize(window, size.x, size.y);
        return window;
    }
    // X servers take a picture as it is; elsewhere OpenGL has to show it.
    SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, CursorCanBeMoved() ? "0" : "1");
    const auto centred = static_cast<int>(SDL_WINDOWPOS_CENTERED_DISPLAY(display));
    window = SDL_CreateWindow(title, centred, centred, size.x, size.y,
                              SDL_WINDOW_HIDDEN | SDL_WINDOW_BORDERLESS);
    if (window != nullptr) {
        SDL_SetWindowData(window, mark, window);
        identifier = SDL_GetWindowID(window);
    }
    return window;
}

void CloseWindow(SDL_Window* window, SDL_Window* parent) {
    const bool hasFocus = SDL_GetKeyboardFocus() == window;
    if (CursorCanBeMoved()) {
        SDL_DestroyWindow(window);
    } else {
        SDL_HideWindow(window);
    }
    if (parent != nullptr && hasFocus) {
        SDL_RaiseWindow(parent);
        SDL_SetWindowInputFocus(parent);  // without a window manager nobody else would
    }
}

/// Shows the box until it is closed, or the program's closing is asked for.
void Run(Box& box) {
    SDL_ShowWindow(box.window);
    SDL_RaiseWindow(box.window);
    while (!box.closed && !CloseIsRequested()) {
        if (!box.isDrawn && !Draw(box)) {
            return;
        }
        box.isDrawn = true;
        SDL_Delay(pause);
        PumpEvents();
        SDL_FilterEvents(TakeEventOfBox, &box);
    }
}

void ShowBox(const char* caption, const char* text) {
    static const HFONT font = CreateFontA(-fontSize, 0, 0, 0, FW_NORMAL, 0, 0, 0, ANSI_CHARSET, 0,
                                          CLIP_DEFAULT_PRECIS, 0, 0, "sans-serif");
    if (font == nullptr) {
        return;
    }
    SDL_Window* parent = TheWindow() != nullptr ? TheWindow()->system : nullptr;
    if (parent != nullptr && (SDL_GetWindowFlags(parent) & SDL_WINDOW_SHOWN) == 0) {
        parent = nullptr;
    }
    const int display = parent != nullptr ? std::max(SDL_GetWindowDisplayIndex(parent), 0) : 0;
    SDL_Rect bounds{};
    SDL_GetDisplayUsableBounds(display, &bounds);

    SDL_Window* drawnTo = SDL_GL_GetCurrentWindow();
    const SDL_GLContext context = SDL_GL_GetCurrentContext();
    const SDL_bool relativeMouse = SDL_GetRelativeMouseMode();
    const int cursor = SDL_ShowCursor(SDL_QUERY);
    SDL_SetRelativeMouseMode(SDL_FALSE);
    SDL_ShowCursor(SDL_ENABLE);
    Box box;
    box.font = font;
    box.window = OpenWindow(caption, LayOut(box, caption, text, bounds), display);
    if (box.window != nullptr) {
        if (parent != nullptr) {
            SDL_SetWindowModalFor(box.window, parent);
        }
        Run(box);
        CloseWindow(box.window, parent);
    }
    if (context != nullptr) {
        SDL_GL_MakeCurrent(drawnTo, context);
    }
    SDL_ShowCursor(cursor);
    SDL_SetRelativeMouseMode(relativeMouse);
}

void Print(const char* caption, const char* text) {
    char utf8Text[8192];
    char utf8Caption[512];
    Windows1250ToUtf8(text, utf8Text, sizeof utf8Text);
    Windows1250ToUtf8(caption, utf8Caption, sizeof utf8Caption);
    if (*caption != '\0') {
        std::fprintf(stderr, "[%s] ", utf8Caption);
    }
    std::fprintf(stderr, "%s\n", utf8Text);
}

}  // namespace

int MessageBoxCount() {
    return boxCount;
}

int MessageBoxA(HWND, const char* text, const char* caption, UINT) {
    text = text != nullptr ? text : "";
    caption = caption != nullptr ? caption : "";
    boxCount++;
    Print(caption, text);
    const bool somebodyIsThere = !CloseIsRequested() && !FramesAreLimited() && FramesAreShown();
    if (somebodyIsThere && StartVideo()) {
        ShowBox(caption, text);
    }
    constexpr int ok = 1;
    return ok;
}
