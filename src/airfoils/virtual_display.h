// The private X display the solver runs on. XFOIL opens a graphics window for
// every viscous point and ends when it finds no display; with its graphics
// switched off, Debian's build dies of a floating-point trap instead. So every
// run gets a virtual display (Xvfb), started once per process at the first
// run, shared by all runs, and stopped when the process ends. It is used even
// when the user has a desktop, so that no solver window pops up on it.
#pragma once

#include <mutex>
#include <string>
#include <sys/types.h>

namespace tarvokin {

class VirtualDisplay {
public:
    // The one display of this process.
    static VirtualDisplay& shared();

    VirtualDisplay() = default;
    ~VirtualDisplay();
    VirtualDisplay(const VirtualDisplay&) = delete;
    VirtualDisplay& operator=(const VirtualDisplay&) = delete;

    // The value of DISPLAY for a solver (":N"), starting the server when it is
    // not running yet or has gone. Empty when it can't be started, with a one
    // line reason for the user in `reason`.
    std::string display(std::string& reason);

    // Stops the server; the next display() starts a new one.
    void stop();

private:
    std::string start(std::string& reason);
    void stopLocked();

    std::mutex mutex_;
    pid_t pid_ = -1;
    std::string display_;
};

}  // namespace tarvokin
