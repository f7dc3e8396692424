#include "platform/drawn_box.h"

#include <SDL.h>

#include <algorithm>
#include <cstring>

#include "platform/close_request.h"
#include "platform/fonts.h"
#include "platform/video.h"
#include "platform/windows1250.h"

namespace {

// Pixels.
constexpr int fontSize = 15;
constexpr int lineHeight = 21;
constexpr int baseLine = 16;  // below the top of a line
constexpr int margin = 20;
constexpr int captionHeight = 30;
constexpr int longestLine = 600;
constexpr SDL_Point buttonSize{90, 30};
constexpr const char* buttonText = "OK";

constexpr int mostLines = 30;  // what is longer is cut
constexpr Uint32 pause = 10;   // milliseconds between two looks at what has happened

struct Colour {
    Uint8 red, green, blue;
};
constexpr Colour paper{236, 236, 236};
constexpr Colour captionPaper{60, 66, 78};
constexpr Colour captionInk{245, 245, 245};
constexpr Colour ink{20, 20, 20};
constexpr Colour buttonPaper{210, 214, 222};

/// A part of the text, without its end.
struct Line {
    const char* start = nullptr;
    const char* end = nullptr;
    int width = 0;  ///< pixels
};

struct Box {
    SDL_Window* window = nullptr;
    Uint32 identifier = 0;
    HFONT font = nullptr;
    Line caption;
    Line lines[mostLines];
    int lineCount = 0;
    SDL_Rect button{};
    bool stale = true;                            ///< has to be drawn
    bool closed = false;                          ///< by its user
    SDL_Scancode keyDown = SDL_SCANCODE_UNKNOWN;  ///< pressed in the box: its release closes it
    bool buttonDown = false;                      ///< the same for the mouse
};

int AdvanceOf(HFONT font, char character) {
    Glyph glyph;
    return LoadGlyph(font, static_cast<unsigned char>(character), glyph) ? glyph.advance : 0;
}

Line Measure(HFONT font, const char* start, const char* end) {
    Line line{start, end, 0};
    for (const char* at = start; at != end; at++) {
        line.width += AdvanceOf(font, *at);
    }
    return line;
}

/// Takes the next line off the text: to its end, or as many words as find room, or a part of a very long
/// word.
Line TakeLine(HFONT font, const char*& text) {
    Line line{text, text, 0};
    Line words = line;  // up to the last blank
    while (*line.end != '\0' && *line.end != '\n') {
        if (*line.end == ' ') {
            words = line;
        }
        const int advance = AdvanceOf(font, *line.end);
        if (line.width + advance > longestLine) {
            line = words.end != words.start ? words : line;
            break;
        }
        line.width += advance;
        line.end++;
    }
    text = *line.end == ' ' || *line.end == '\n' ? line.end + 1 : line.end;
    return line;
}

void Fill(SDL_Surface* surface, const SDL_Rect& place, Colour colour) {
    SDL_FillRect(surface, &place, SDL_MapRGB(surface->format, colour.red, colour.green, colour.blue));
}

/// @param left,top of the line
void DrawLine(SDL_Surface* surface, HFONT font, const Line& line, int left, int top, Colour colour) {
    for (const char* at = line.start; at != line.end; at++) {
        Glyph glyph;
        if (!LoadGlyph(font, static_cast<unsigned char>(*at), glyph)) {
            continue;
        }
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
    const Line label = Measure(box.font, buttonText, buttonText + std::strlen(buttonText));
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

/// Whether an event is one of the window with that identifier.
bool IsOf(const SDL_Event& event, Uint32 identifier) {
    const bool ofAWindow =
        event.type == SDL_WINDOWEVENT || (event.type >= SDL_KEYDOWN && event.type <= SDL_MOUSEWHEEL);
    return ofAWindow && event.window.windowID == identifier;
}

/// SDL shows each event when it comes; those of other windows wait in its queue.
int WatchBox(void* data, SDL_Event* event) {
    Box& box = *static_cast<Box*>(data);
    if (!IsOf(*event, box.identifier)) {
        return 0;
    }
    switch (event->type) {
        case SDL_WINDOWEVENT:
            box.stale = true;
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

/// 0 takes an event of the box out of the queue.
int KeepOthers(void* data, SDL_Event* event) {
    return IsOf(*event, *static_cast<Uint32*>(data)) ? 0 : 1;
}

/// Shows the box until it is closed; false if it can't be shown.
bool Run(Box& box) {
    SDL_AddEventWatch(WatchBox, &box);
    SDL_ShowWindow(box.window);
    SDL_RaiseWindow(box.window);
    bool shown = true;
    while (shown && !box.closed && !CloseIsRequested()) {
        if (box.stale) {
            box.stale = false;
            shown = Draw(box);
        }
        SDL_Delay(pause);
        SDL_PumpEvents();
    }
    SDL_DelEventWatch(WatchBox, &box);
    return shown;
}

/// Under Wayland SDL hears of windows that it has destroyed, and crashes. So one window, hidden meanwhile,
/// serves all boxes there.
void PutAway(SDL_Window* window) {
    if (CursorCanBeMoved()) {
        SDL_DestroyWindow(window);
    } else {
        SDL_HideWindow(window);
    }
}

/// The window that is there already, or a new one; null if there can be none.
SDL_Window* BoxWindow(const char* title, int width, int height) {
    constexpr const char* mark = "box";
    static Uint32 identifier = 0;
    SDL_Window* window = SDL_GetWindowFromID(identifier);
    if (window != nullptr && SDL_GetWindowData(window, mark) != nullptr) {
        SDL_SetWindowTitle(window, title);
        SDL_SetWindowSize(window, width, height);
        return window;
    }
    // X servers take a picture as it is; elsewhere OpenGL has to show it.
    SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, CursorCanBeMoved() ? "0" : "1");
    window = SDL_CreateWindow(title, SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, width, height,
                              SDL_WINDOW_HIDDEN | SDL_WINDOW_BORDERLESS);
    if (window != nullptr) {
        SDL_SetWindowData(window, mark, window);
        identifier = SDL_GetWindowID(window);
    }
    return window;
}

}  // namespace

bool ShowDrawnBox(SDL_Window* parent, const char* caption, const char* text) {
    static const HFONT font = CreateFontA(-fontSize, 0, 0, 0, FW_NORMAL, 0, 0, 0, ANSI_CHARSET, 0,
                                          CLIP_DEFAULT_PRECIS, 0, 0, "sans-serif");
    if (font == nullptr) {
        return false;
    }
    Box box;
    box.font = font;
    box.caption = Measure(font, caption, caption + std::strlen(caption));
    int widest = std::max(box.caption.width, buttonSize.x);
    while (*text != '\0' && box.lineCount < mostLines) {
        box.lines[box.lineCount] = TakeLine(font, text);
        widest = std::max(widest, box.lines[box.lineCount++].width);
    }
    const int width = std::min(widest, longestLine) + 2 * margin;
    box.button = {(width - buttonSize.x) / 2, captionHeight + 2 * margin + box.lineCount * lineHeight,
                  buttonSize.x, buttonSize.y};
    const int height = box.button.y + box.button.h + margin;

    SDL_Window* drawnTo = SDL_GL_GetCurrentWindow();
    const SDL_GLContext context = SDL_GL_GetCurrentContext();
    const SDL_bool relativeMouse = SDL_GetRelativeMouseMode();
    const int cursor = SDL_ShowCursor(SDL_QUERY);
    SDL_SetRelativeMouseMode(SDL_FALSE);
    SDL_ShowCursor(SDL_ENABLE);
    char title[512];
    Windows1250ToUtf8(caption, title, sizeof title);
    box.window = BoxWindow(title, width, height);
    bool shown = false;
    if (box.window != nullptr) {
        box.identifier = SDL_GetWindowID(box.window);
        if (parent != nullptr) {
            SDL_SetWindowModalFor(box.window, parent);
        }
        shown = Run(box);
        PutAway(box.window);
        if (parent != nullptr) {
            SDL_RaiseWindow(parent);
        }
        SDL_PumpEvents();
        SDL_FilterEvents(KeepOthers, &box.identifier);
    }
    if (context != nullptr) {
        SDL_GL_MakeCurrent(drawnTo, context);
    }
    SDL_ShowCursor(cursor);
    SDL_SetRelativeMouseMode(relativeMouse);
    return shown;
}
