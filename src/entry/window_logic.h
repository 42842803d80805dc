// The logic of every window, installed on a workbench: the refresh of each
// analysis panel by toolbar button, and the handlers of each window's
// controls by window and control name. Every program (the application, the
// command-line program, the tests and the benchmarks) installs it once on the
// workbench it makes.
#pragma once

namespace tarvokin {

class Workbench;

void InstallWindowLogic(Workbench& wb);

}  // namespace tarvokin
