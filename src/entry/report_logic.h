// The report of the open model (toolbar button 32): the page and its ten
// pictures in MODELES, the analysis windows it needs opened, refreshed,
// pictured and closed again.
#pragma once

#include <string>

namespace tarvokin {

class Workbench;

// Writes MODELES/<model>.HTM and its pictures and returns the page's path.
// Every file is written beside its place and then put in place, so a failure
// leaves the earlier report whole. Throws RunError on a model name the file
// system refuses, a folder that cannot be written, or a picture that cannot
// be drawn (no screen to draw it with).
std::string WriteReport(Workbench& wb);

// The toolbar button: the report, then its path shown and the page opened.
void ReportCommand(Workbench& wb);

}  // namespace tarvokin
