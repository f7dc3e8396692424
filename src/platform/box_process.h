#pragma once

/// SDL shows a box from a process that it forks and waits for. For as long as this lives, a process that is
/// forked goes with this one, however this one ends.
struct BoxProcess {
    BoxProcess();
    ~BoxProcess();
    BoxProcess(const BoxProcess&) = delete;
    BoxProcess& operator=(const BoxProcess&) = delete;
};

/// Ends such a process, if there is one, or before it has shown anything. Signal handlers may call it.
void EndBoxProcess();
