#include "power/power_fields.h"

#include "power/servos.h"
#include "shell/workbench.h"

namespace tarvokin {

bool PowerFieldChange(Workbench& wb, Cell c) {
    switch (cellTable()[c.id].form) {
        case Form::F_SERVOS: Calc_Servos(wb); return true;
        default: return false;
    }
}

void registerPowerPanels(Workbench& wb) { wb.panelRefresh[button::Servos] = Calc_Servos; }

}  // namespace tarvokin
