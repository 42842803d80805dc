// The command-line program: batch design runs and regression checks through
// the same routines as the windows.
#pragma once

#include <functional>
#include <ostream>
#include <string>
#include <vector>

namespace tarvokin {

class Workbench;

// Runs one command; args exclude the program name. Returns the exit status.
int runCli(const std::vector<std::string>& args, const std::string& executable, std::ostream& out,
           std::ostream& err);

// Set by a build that can draw off screen: run on the workbench of each
// command, it gives the report its pictures. Without it `report` says that
// it has nothing to draw with.
void SetScreenHooks(std::function<void(Workbench&)> install);

// Every cell of every window as FORM.FIELD=VALUE, one a line, sorted; a list
// control also gives FORM.FIELD.ListIndex=N.
void printFields(const Workbench& wb, std::ostream& out);

}  // namespace tarvokin
