#pragma once

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "support/virtual_display.h"

/// A Wayland compositor with an X server of its own, in a window that fills most of a virtual display: keys
/// and clicks on that display are its user's. WAYLAND_DISPLAY names it, and no DISPLAY is set, for as long
/// as the object lives. Throws if it doesn't come up.
struct WaylandDisplay {
    VirtualDisplay outer;
    std::filesystem::path folder;
    std::string innerDisplay;  ///< of its X server, such as ":8"
    pid_t compositor = -1;

    static bool IsInstalled() {
        return RunCommand("command -v weston && command -v Xwayland").exitCode == 0;
    }

    WaylandDisplay() {
        std::string pattern = (std::filesystem::temp_directory_path() / "engine-test-XXXXXX").string();
        folder = mkdtemp(pattern.data());
        setenv("XDG_RUNTIME_DIR", folder.c_str(), 1);
        const std::string log = (folder / "log").string();
        RepeatIfItDies();
        compositor = fork();
        if (compositor == 0) {
            prctl(PR_SET_PDEATHSIG, SIGTERM);
            execlp("weston", "weston", "--backend=x11-backend.so", "--xwayland", "--width=1200",
                   "--height=900", "--idle-time=0", "--no-config", "--socket=wayland-test",
                   ("--log=" + log).c_str(), static_cast<char*>(nullptr));
            _exit(127);
        }
        const std::string tells = "xserver listening on display ";
        std::string told;
        const bool started = WaitUntil([&] {
            told = RunCommand("cat " + log + " 2>&1").output;
            return told.find(tells) != std::string::npos &&
                   told.find("weston-desktop-shell'") != std::string::npos;
        });
        if (!started) {
            throw std::runtime_error("weston doesn't start");
        }
        const std::size_t name = told.find(tells) + tells.size();
        innerDisplay = told.substr(name, told.find('\n', name) - name);
        Xdotool("mousemove 1250 1000 sleep 0.1 mousemove 600 450");  // it learns where the mouse is as that
                                                                     // enters
        unsetenv("DISPLAY");
        setenv("WAYLAND_DISPLAY", "wayland-test", 1);
    }
    ~WaylandDisplay() {
        watched = nullptr;
        EndProcess(compositor);
        unsetenv("WAYLAND_DISPLAY");
        unsetenv("XDG_RUNTIME_DIR");
        std::filesystem::remove_all(folder);
    }
    WaylandDisplay(const WaylandDisplay&) = delete;
    WaylandDisplay& operator=(const WaylandDisplay&) = delete;

    /// Runs xdotool as the user of the outer display.
    void Xdotool(const std::string& arguments) const {
        RunCommand("DISPLAY=" + outer.name + " xdotool " + arguments + " 2>&1");
    }

private:
    static inline const WaylandDisplay* watched = nullptr;
    static inline std::string commandLine;
    static inline std::vector<char*> ownArguments;
    static inline std::vector<char*> ownEnvironment;

    /// weston 10 crashes once in some hundred starts, and takes the windows of this process along. Then the
    /// process begins anew, once: under ctest that is the one test.
    void RepeatIfItDies() {
        watched = this;
        if (std::getenv("ENGINE_TEST_REPEATED") != nullptr) {
            return;
        }
        // What a handler of signals can't put together.
        static char repeated[] = "ENGINE_TEST_REPEATED=1";
        commandLine = RunCommand("cat /proc/" + std::to_string(getpid()) + "/cmdline").output;
        ownArguments.clear();
        for (std::size_t at = 0; at < commandLine.size(); at = commandLine.find('\0', at) + 1) {
            ownArguments.push_back(&commandLine[at]);
        }
        ownArguments.push_back(nullptr);
        ownEnvironment = {repeated};
        for (char** variable = environ; *variable != nullptr; variable++) {
            ownEnvironment.push_back(*variable);
        }
        ownEnvironment.push_back(nullptr);
        struct sigaction action {};
        action.sa_handler = BeginAnewWithoutCompositor;
        action.sa_flags = SA_RESTART | SA_NODEFER;
        sigaction(SIGCHLD, &action, nullptr);
    }
    static void BeginAnewWithoutCompositor(int) {
        const int error = errno;
        if (watched != nullptr && watched->compositor > 0 &&
            waitpid(watched->compositor, nullptr, WNOHANG) == watched->compositor) {
            constexpr char told[] = "weston has died: once more from the beginning.\n";
            static_cast<void>(write(STDERR_FILENO, told, sizeof told - 1) == 0);
            kill(watched->outer.server, SIGTERM);
            execve("/proc/self/exe", ownArguments.data(), ownEnvironment.data());
        }
        errno = error;
    }
};
