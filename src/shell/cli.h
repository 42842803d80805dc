// The command-line program: batch design runs and regression checks through
// the same routines as the windows.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace tarvokin {

class Workbench;

// Runs one command; args exclude the program name. Returns the exit status.
int runCli(const std::vector<std::string>& args, const std::string& executable, std::ostream& out,
           std::ostream& err);

// Every cell of every window as FORM.FIELD=VALUE, one a line, sorted; a list
// control also gives FORM.FIELD.ListIndex=N.
void printFields(const Workbench& wb, std::ostream& out);

}  // namespace tarvokin
