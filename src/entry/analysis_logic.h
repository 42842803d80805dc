// The buttons of the analysis windows: the performance windows F_GEO_3 and
// F_GEO_5 and the aspect-ratio panel F_ALLONGEMENT. Their fields, check boxes
// and sliders run the field rules.
#pragma once

namespace tarvokin {

class Workbench;

void installAnalysisLogic(Workbench& wb);

}  // namespace tarvokin
