#include "platform/file_watch.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <utility>

#include "platform/clock.h"

namespace {

constexpr DWORD stillness = 200;  // milliseconds

int notifier = -1;
bool changed = false;
DWORD lastChange = 0;

}  // namespace

void WatchFolders(const std::vector<std::string>& folders) {
    if (notifier >= 0) {
        close(notifier);
    }
    notifier = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    for (const std::string& folder : folders) {
        inotify_add_watch(notifier, folder.c_str(), IN_MODIFY | IN_CREATE | IN_DELETE | IN_MOVE);
    }
}

bool ChangesHaveSettled() {
    char events[4096];
    while (read(notifier, events, sizeof events) > 0) {
        changed = true;
        lastChange = timeGetTime();
    }
    return changed && timeGetTime() - lastChange >= stillness && std::exchange(changed, false);
}
