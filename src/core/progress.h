// Progress and cancellation of long work. The GUI implements it with a
// progress bar and a Cancel button, the command-line program prints the
// reports; work that nobody watches is given none.
#pragma once

#include <string>

namespace tarvokin {

struct Progress {
    virtual ~Progress() = default;
    // What is being done, and how far, from 0 to 1.
    virtual void report(const std::string& text, double fraction) { (void)text, (void)fraction; }
    // Asked between steps of the work: true stops it as soon as it can.
    virtual bool cancelled() { return false; }
};

}  // namespace tarvokin
