// Open and save of a project: the file's keys into the cells with the
// recalculation, and the cells back into the file.
#pragma once

namespace tarvokin {

class Workbench;
class ProfileDocument;

// Reads wb.projectFilePath: the design keys, one recalculation, the open
// analysis panels refreshed, the power keys, the airfoil slots.
void LoadProject(Workbench& wb);

// The same load from a document in memory (a workbook brought back, a
// design put together by a tool), wb.projectFilePath kept as it is.
void LoadProjectDocument(Workbench& wb, const ProfileDocument& doc);

// Writes every key of the project into wb.projectFilePath, keeping what the
// program does not know of the file. A file that cannot be written is told
// through wb.showMessage and gives false; the file on disk is then the one
// the user had, and the design stays marked as not saved.
bool SaveProject(Workbench& wb);

}  // namespace tarvokin
