#include "airfoils/virtual_display.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace tarvokin {

namespace {

// Full path of a program found on PATH, or "" when there is none.
std::string findOnPath(const std::string& program) {
    const char* env = std::getenv("PATH");
    const std::string path = (env && *env) ? env : "/usr/local/bin:/usr/bin:/bin";
    size_t from = 0;
    while (from <= path.size()) {
        size_t to = path.find(':', from);
        if (to == std::string::npos) to = path.size();
        std::string dir = path.substr(from, to - from);
        if (dir.empty()) dir = ".";
        const std::string candidate = dir + "/" + program;
        struct stat st {};
        if (::stat(candidate.c_str(), &st) == 0 && S_ISREG(st.st_mode) && ::access(candidate.c_str(), X_OK) == 0)
            return candidate;
        from = to + 1;
    }
    return "";
}

// Waits for a child to end for at most `ms`; true when it has been reaped.
bool reapWithin(pid_t pid, int ms) {
    const auto until = std::chrono::steady_clock::now() + std::chrono::milliseconds(ms);
    for (;;) {
        int status = 0;
        const pid_t r = ::waitpid(pid, &status, WNOHANG);
        if (r == pid || (r < 0 && errno != EINTR)) return true;
        if (std::chrono::steady_clock::now() >= until) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

constexpr int kStartMs = 10000;  // a cold server needs well under a second

}  // namespace

VirtualDisplay& VirtualDisplay::shared() {
    static VirtualDisplay display;
    return display;
}

VirtualDisplay::~VirtualDisplay() { stopLocked(); }

std::string VirtualDisplay::display(std::string& reason) {
    std::lock_guard<std::mutex> lock(mutex_);
    if (pid_ > 0) {
        int status = 0;
        const pid_t r = ::waitpid(pid_, &status, WNOHANG);
        if (r == 0) return display_;
        // A program that ignores SIGCHLD has its children reaped for it.
        if (r < 0 && errno == ECHILD && ::kill(pid_, 0) == 0) return display_;
        pid_ = -1;  // the server has gone: start another
        display_.clear();
    }
    return start(reason);
}

void VirtualDisplay::stop() {
    std::lock_guard<std::mutex> lock(mutex_);
    stopLocked();
}

void VirtualDisplay::stopLocked() {
    if (pid_ <= 0) return;
    ::kill(pid_, SIGTERM);
    if (!reapWithin(pid_, 2000)) {
        ::kill(pid_, SIGKILL);
        reapWithin(pid_, 2000);
    }
    pid_ = -1;
    display_.clear();
}

std::string VirtualDisplay::start(std::string& reason) {
    const std::string xvfb = findOnPath("Xvfb");
    if (xvfb.empty()) {
        reason = "Xvfb n'est pas installé : XFOIL en a besoin comme écran (paquet xvfb)";
        return "";
    }
    int fds[2];
    if (::pipe2(fds, O_CLOEXEC) != 0) {
        reason = "Impossible de démarrer Xvfb : pas de tube pour son numéro d'écran";
        return "";
    }
    // The server picks a free display number itself and writes it on this
    // descriptor once it accepts clients: no guessing, no race with others.
    const std::string fd = std::to_string(fds[1]);
    std::vector<std::string> args = {"Xvfb", "-displayfd", fd, "-screen", "0", "1280x1024x24", "-nolisten", "tcp"};
    std::vector<char*> argv;
    for (auto& a : args) argv.push_back(a.data());
    argv.push_back(nullptr);
    const pid_t parent = ::getpid();

    const pid_t pid = ::fork();
    if (pid < 0) {
        ::close(fds[0]);
        ::close(fds[1]);
        reason = "Impossible de démarrer Xvfb : le système refuse un nouveau processus";
        return "";
    }
    if (pid == 0) {
        // Only async-signal-safe calls from here to exec. The server must not
        // outlive a program that is killed before it can stop it.
        ::prctl(PR_SET_PDEATHSIG, SIGTERM);
        if (::getppid() != parent) ::_exit(1);
        sigset_t none;
        sigemptyset(&none);
        ::sigprocmask(SIG_SETMASK, &none, nullptr);
        ::fcntl(fds[1], F_SETFD, 0);
        ::close(fds[0]);
        const int null = ::open("/dev/null", O_RDWR);
        if (null >= 0) {
            ::dup2(null, 0);
            ::dup2(null, 1);
            ::dup2(null, 2);
        }
        ::execv(xvfb.c_str(), argv.data());
        ::_exit(127);
    }
    ::close(fds[1]);

    std::string number;
    bool complete = false;
    const auto until = std::chrono::steady_clock::now() + std::chrono::milliseconds(kStartMs);
    while (!complete) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(until - std::chrono::steady_clock::now());
        if (left.count() <= 0) break;
        pollfd p{fds[0], POLLIN, 0};
        const int n = ::poll(&p, 1, static_cast<int>(left.count()));
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) break;
        char buf[32];
        const ssize_t got = ::read(fds[0], buf, sizeof buf);
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) break;  // the server ended without a display
        for (ssize_t i = 0; i < got; ++i) {
            if (buf[i] == '\n') complete = true;
            else if (buf[i] >= '0' && buf[i] <= '9') number.push_back(buf[i]);
        }
    }
    ::close(fds[0]);

    if (!complete || number.empty()) {
        ::kill(pid, SIGKILL);
        reapWithin(pid, 2000);
        reason = "Xvfb n'a pas démarré : XFOIL n'a pas d'écran";
        return "";
    }
    pid_ = pid;
    display_ = ":" + number;
    return display_;
}

}  // namespace tarvokin
