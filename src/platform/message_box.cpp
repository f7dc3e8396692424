#include "platform/message_box.h"

#include <SDL.h>
#include <langinfo.h>
#include <locale.h>

#include <cstdio>
#include <cstdlib>

#include "platform/box_focus.h"
#include "platform/box_process.h"
#include "platform/close_request.h"
#include "platform/drawn_box.h"
#include "platform/frame_limit.h"
#include "platform/message_queue.h"
#include "platform/video.h"
#include "platform/window_record.h"
#include "platform/windows1250.h"

namespace {

bool EnvironmentIsUtf8() {
    const locale_t locale = newlocale(LC_CTYPE_MASK, "", nullptr);
    if (locale == nullptr) {
        return false;
    }
    const bool isUtf8 = SDL_strcasecmp(nl_langinfo_l(CODESET, locale), "UTF-8") == 0;
    freelocale(locale);
    return isUtf8;
}

/// The box takes its locale from the environment, and cuts the text at the first letter that the
/// locale lacks: under plain C at the first accented one. This lends it a locale that has them all.
/// The locale of this process, with its decimal point, stays as it is.
struct Utf8Environment {
    char before[64] = "";
    bool changed = false;
    bool wasSet = false;

    Utf8Environment() {
        if (EnvironmentIsUtf8()) {
            return;
        }
        if (const char* value = std::getenv("LC_ALL")) {
            wasSet = true;
            SDL_strlcpy(before, value, sizeof before);
        }
        changed = setenv("LC_ALL", "C.UTF-8", 1) == 0;
    }
    ~Utf8Environment() {
        if (!changed) {
            return;
        }
        if (wasSet) {
            setenv("LC_ALL", before, 1);
        } else {
            unsetenv("LC_ALL");
        }
    }
};

Uint32 BoxKind(UINT style) {
    if (style == MB_ICONERROR) {
        return SDL_MESSAGEBOX_ERROR;
    }
    return style == MB_ICONEXCLAMATION ? SDL_MESSAGEBOX_WARNING : SDL_MESSAGEBOX_INFORMATION;
}

/// The window that the box stands above; null if none is to be seen.
SDL_Window* BoxParent() {
    SDL_Window* system = TheWindow() != nullptr ? TheWindow()->system : nullptr;
    return system != nullptr && (SDL_GetWindowFlags(system) & SDL_WINDOW_SHOWN) ? system : nullptr;
}

/// SDL's own box. Text and caption are UTF-8.
bool ShowSystemBox(SDL_Window* parent, Uint32 kind, const char* caption, const char* text) {
    const Utf8Environment environment;
    const BoxProcess process;
    const bool shown = SDL_ShowSimpleMessageBox(kind, caption, text, parent) == 0;
    // SDL reports a release for each key that is held, though nobody has released any.
    SDL_FlushEvent(SDL_KEYUP);
    return shown;
}

/// A text in both codes.
struct BoxText {
    const char* windows1250;
    const char* utf8;
};

bool ShowBox(Uint32 kind, const BoxText& caption, const BoxText& text) {
    if (!StartVideo()) {
        return false;
    }
    const BoxFocus focus;
    SDL_Window* parent = BoxParent();
    GatherEvents();
    // Under Wayland SDL asks a program that may not be there, and takes its failure for a box that was
    // closed.
    bool shown = CursorCanBeMoved() && ShowSystemBox(parent, kind, caption.utf8, text.utf8);
    if (!shown && !CloseIsRequested()) {
        shown = ShowDrawnBox(parent, caption.windows1250, text.windows1250);
    }
    if (parent != nullptr && focus.gives) {
        SDL_SetWindowInputFocus(parent);
    }
    return shown;
}

/// Whether a box would be read and closed.
bool SomebodyIsThere() {
    return !CloseIsRequested() && !FramesAreLimited();
}

}  // namespace

int MessageBoxA(HWND, const char* text, const char* caption, UINT style) {
    // No allocation: one of the texts tells that memory has run out.
    char utf8Text[8192];
    char utf8Caption[512];
    text = text != nullptr ? text : "";
    caption = caption != nullptr ? caption : "";
    Windows1250ToUtf8(text, utf8Text, sizeof utf8Text);
    Windows1250ToUtf8(caption, utf8Caption, sizeof utf8Caption);

    constexpr int ok = 1;
    if (SomebodyIsThere() && ShowBox(BoxKind(style), {caption, utf8Caption}, {text, utf8Text})) {
        return ok;
    }
    if (utf8Caption[0] != '\0') {
        std::fprintf(stderr, "[%s] %s\n", utf8Caption, utf8Text);
    } else {
        std::fprintf(stderr, "%s\n", utf8Text);
    }
    return ok;
}
