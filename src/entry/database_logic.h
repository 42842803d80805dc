// F_BASE, the airfoil database browser: the tree, the look at one polar, the
// editing of an outline's thickness and camber, and the commands that add,
// save, delete and compute airfoils and polars.
#pragma once

#include <string>

namespace tarvokin {

class Workbench;

// A node of the tree chosen: the airfoil's outline loaded with its figures,
// and the polar of the node (or of the airfoil at the Reynolds number of
// Text3, else its first) read for the charts. polarIndex -1: the airfoil node.
void SelectDatabaseNode(Workbench& wb, const std::string& airfoil, int polarIndex);

void installDatabaseLogic(Workbench& wb);

}  // namespace tarvokin
