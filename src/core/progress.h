// Progress and cancellation of long work. The GUI implements it with a
// progress bar and a Cancel button, the command-line program prints the
// reports; work that nobody watches is given none.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace tarvokin {

struct Progress {
    virtual ~Progress() = default;
    // What is being done, and how far, from 0 to 1.
    virtual void report(const std::string& text, double fraction) { (void)text, (void)fraction; }
    // Several runs at once (the polar batch): each run's text and how far it
    // is, in the order of the runs, reported with every step. A watcher that
    // shows one line only may leave it; report() still tells each start.
    virtual void reportRuns(const std::vector<std::pair<std::string, double>>& runs) { (void)runs; }
    // Asked between steps of the work: true stops it as soon as it can.
    virtual bool cancelled() { return false; }
};

}  // namespace tarvokin
