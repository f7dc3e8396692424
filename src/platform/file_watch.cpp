#include "platform/file_watch.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <utility>

#include "platform/clock.h"

namespace {

constexpr DWORD stillness = 200;  // milliseconds

int notifier = -1;
std::string ownFile;
bool changed = false;
DWORD lastChange = 0;

}  // namespace

void WatchFolders(const std::vector<std::string>& folders, const std::string& except) {
    if (notifier >= 0) {
        close(notifier);
    }
    ownFile = except;
    notifier = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    if (notifier < 0) {
        std::fprintf(stderr, "engine: error: changes of files can't be noticed: %s\n",
                     std::strerror(errno));
    }
    for (const std::string& folder : folders) {
        inotify_add_watch(notifier, folder.c_str(), IN_MODIFY | IN_CREATE | IN_DELETE | IN_MOVE);
    }
}

bool ChangesHaveSettled() {
    alignas(inotify_event) char events[4096];
    for (ssize_t size = 0; (size = read(notifier, events, sizeof events)) > 0;) {
        const inotify_event* event = nullptr;
        for (const char* at = events; at < events + size; at += sizeof *event + event->len) {
            event = reinterpret_cast<const inotify_event*>(at);
            if (event->len == 0 || ownFile != event->name) {
                changed = true;
                lastChange = timeGetTime();
            }
        }
    }
    return changed && timeGetTime() - lastChange >= stillness && std::exchange(changed, false);
}
