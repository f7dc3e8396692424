#pragma once

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/command.h"
#include "support/end_process.h"
#include "support/wait_until.h"

enum class WindowManager { None, Openbox };

/// An X server of its own on a free number, 1280 by 1024 at 24 bits, with or without a window manager.
/// DISPLAY names it for as long as the object lives; both processes end with it. Throws if the server
/// or the manager doesn't come up.
struct VirtualDisplay {
    std::string name;  ///< such as ":7"
    pid_t server = -1;
    pid_t manager = -1;

    explicit VirtualDisplay(WindowManager windowManager = WindowManager::None) {
        if (const char* before = std::getenv("DISPLAY")) {
            displayBefore = before;
        }
        int numberPipe[2];
        if (pipe(numberPipe) != 0) {
            throw std::runtime_error("no pipe for Xvfb");
        }
        fcntl(numberPipe[0], F_SETFD, FD_CLOEXEC);
        server = Start({"Xvfb", "-displayfd", std::to_string(numberPipe[1]), "-screen", "0", "1280x1024x24",
                        "+extension", "GLX", "+extension", "RANDR", "-noreset", "-nolisten", "tcp"});
        close(numberPipe[1]);
        pollfd number{numberPipe[0], POLLIN, 0};
        for (char digit;
             poll(&number, 1, 20000) == 1 && read(numberPipe[0], &digit, 1) == 1 && digit != '\n';) {
            name += digit;
        }
        close(numberPipe[0]);
        if (name.empty()) {
            EndProcess(server);
            throw std::runtime_error("Xvfb doesn't start");
        }
        name.insert(0, ":");
        setenv("DISPLAY", name.c_str(), 1);
        // No desktop session belongs to this display, and looking for one leaves memory behind.
        setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1);
        if (windowManager == WindowManager::Openbox) {
            StartManager();
        }
    }

    ~VirtualDisplay() {
        EndProcess(manager);
        EndProcess(server);
        if (displayBefore) {
            setenv("DISPLAY", displayBefore->c_str(), 1);
        } else {
            unsetenv("DISPLAY");
        }
    }

    VirtualDisplay(const VirtualDisplay&) = delete;
    VirtualDisplay& operator=(const VirtualDisplay&) = delete;

    /// Runs xdotool, as in `Xdotool("key a")`, and returns what it prints.
    std::string Xdotool(const std::string& arguments) const {
        return RunCommand("xdotool " + arguments + " 2>&1").output;
    }

    /// Waits until a window of that title is to be seen, and gives its number; empty if none comes.
    /// @param visibility empty for windows that aren't shown, too
    std::string WaitForWindow(const std::string& title, const char* visibility = "--onlyvisible") const {
        std::string found;
        WaitUntil([&] {  // it gives up, with a message, when another window goes while it looks
            found = Xdotool(std::string("search ") + visibility + " --name '^" + title + "$'");
            found.resize(std::min(found.find('\n'), found.size()));
            return !found.empty() && found.find_first_not_of("0123456789") == std::string::npos;
        });
        return found;
    }

    /// The size of the window with that title, such as "200x100"; empty without one. (xdotool doesn't find
    /// message boxes by their title.)
    std::string WindowSize(const std::string& title) const {
        CommandResult tree;
        do {  // it gives up when a window goes while it looks
            tree = RunCommand("xwininfo -root -tree 2>/dev/null");
        } while (tree.exitCode != 0 && kill(server, 0) == 0);
        const std::string& windows = tree.output;
        const std::size_t found = windows.find("\"" + title + "\": (");
        if (found == std::string::npos) {
            return {};
        }
        const std::size_t start = windows.find(')', found) + 1;
        const std::size_t size = windows.find_first_not_of(' ', start);
        return windows.substr(size, windows.find('+', size) - size);
    }

    /// Waits for a message box and presses Return until it is gone, as a user would. False if no box
    /// comes, or if it doesn't close. `size` is given the box's, as `WindowSize` gives it. `next` is a
    /// window that comes when the box has gone, where another box of that title may follow at once.
    bool CloseBox(const std::string& title, std::string* size = nullptr, const char* next = nullptr) const {
        if (!WaitUntil([&] { return !WindowSize(title).empty(); })) {
            return false;
        }
        if (size != nullptr) {
            *size = WindowSize(title);
        }
        const auto isGone = [&] {
            return next != nullptr ? !WindowSize(next).empty() : WindowSize(title).empty();
        };
        // A box that didn't listen yet needs another one, but one too many is meant for the next box.
        return WaitUntil([&] {
            Xdotool("key Return");
            return WaitUntil(isGone, std::chrono::seconds(4));
        });
    }

    /// Saves what the screen shows; the suffix of the name decides the format.
    bool SaveScreenshot(const std::string& fileName) const {
        return RunCommand("import -window root '" + fileName + "' 2>&1").exitCode == 0;
    }

    /// Ends the server as a crash would.
    void KillServer() {
        kill(server, SIGKILL);
        waitpid(server, nullptr, 0);
        server = -1;
    }

private:
    std::optional<std::string> displayBefore;

    void StartManager() {
        manager = Start({"openbox", "--config-file", "/etc/xdg/openbox/rc.xml"});
        // A manager sets the number of desktops when it is ready; without it this command fails.
        if (!WaitUntil([] { return RunCommand("xdotool get_num_desktops 2>&1").exitCode == 0; })) {
            EndProcess(manager);
            EndProcess(server);
            throw std::runtime_error("openbox doesn't start");
        }
    }

    static pid_t Start(const std::vector<std::string>& command) {
        std::vector<char*> arguments;
        arguments.reserve(command.size() + 1);
        for (const std::string& argument : command) {
            arguments.push_back(const_cast<char*>(argument.c_str()));
        }
        arguments.push_back(nullptr);
        const pid_t child = fork();
        if (child != 0) {
            return child;
        }
        prctl(PR_SET_PDEATHSIG, SIGTERM);  // a test that is killed leaves no server behind
        const int nowhere = open("/dev/null", O_RDWR);
        dup2(nowhere, STDIN_FILENO);
        dup2(nowhere, STDOUT_FILENO);
        dup2(nowhere, STDERR_FILENO);
        execvp(arguments[0], arguments.data());
        _exit(127);
    }
};
