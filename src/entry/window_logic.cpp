#include "entry/window_logic.h"

#include "core/workbench.h"
#include "design/aspect_ratio.h"
#include "design/performance.h"
#include "entry/airfoil_choice.h"
#include "entry/analysis_logic.h"
#include "entry/design_logic.h"
#include "entry/field_rules.h"
#include "entry/frame_logic.h"
#include "entry/fuselage_logic.h"
#include "entry/main_window_logic.h"
#include "entry/naca_logic.h"
#include "entry/ribs_logic.h"
#include "entry/power_logic.h"
#include "entry/preferences_logic.h"
#include "entry/view_logic.h"
#include "entry/vlm_logic.h"
#include "entry/workbook_logic.h"
#include "entry/wizard_logic.h"
#include "entry/pressure_logic.h"
#include "entry/database_logic.h"
#include "entry/interpolation_logic.h"
#include "power/motorisation.h"
#include "power/power_fields.h"

namespace tarvokin {

namespace {

void installPanels(Workbench& wb) {
    // The analysis panels whose refresh is plain calculation; a window may
    // wrap its entry to redraw after it.
    registerPerformancePanels(wb);
    // The aspect-ratio step is followed by the motor figures of the design
    // window, which read the same masses and loadings.
    wb.panelRefresh[button::Allongement] = [](Workbench& w) {
        MajAllongement(w);
        MajMotorisation(w);
    };
    registerPowerPanels(wb);
}

}  // namespace

void InstallWindowLogic(Workbench& wb) {
    installPanels(wb);
    installFieldRules(wb);
    installAirfoilChoice(wb);
    installAnalysisLogic(wb);
    installMainWindowLogic(wb);
    installPowerLogic(wb);
    installDesignLogic(wb);
    installViewLogic(wb);
    installPreferencesLogic(wb);
    installVlmLogic(wb);
    installFuselageLogic(wb);
    installFrameLogic(wb);
    installWorkbookLogic(wb);
    installWizardLogic(wb);
    installNacaLogic(wb);
    installRibsLogic(wb);
    installPressureLogic(wb);
    installDatabaseLogic(wb);
    installInterpolationLogic(wb);
}

}  // namespace tarvokin
