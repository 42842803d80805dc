#include "power/power_fields.h"

#include "power/calc_mot.h"
#include "power/motorisation.h"
#include "power/servos.h"
#include "core/workbench.h"

namespace tarvokin {

namespace {

bool isDesignMotorField(Cell c) {
    using namespace F_3D;
    for (Cell m : {b6, Combo1, Combo2, d6, d7, f5, f6, Combo3, Combo4, Combo6}) {
        if (c == m) return true;
    }
    return false;
}

}  // namespace

bool PowerFieldChange(Workbench& wb, Cell c) {
    switch (cellTable()[c.id].form) {
        case Form::F_CALC_MOT: CALC08(wb); return true;
        case Form::F_SERVOS: Calc_Servos(wb); return true;
        case Form::F_MOTORISATIONS:
            if (c == F_MOTORISATIONS::CB_MOT)
                CB_MOT_Click(wb);
            else if (c == F_MOTORISATIONS::Check1)
                FillMotorCombo(wb);
            else
                RefreshMotorisation(wb);
            return true;
        default: break;
    }
    if (!isDesignMotorField(c)) return false;
    if (wb.isOpen(button::Motorisation)) {
        // The type filter of the motor list follows the design's motor type.
        if (c == F_3D::Combo4 && wb.sheet.on(F_MOTORISATIONS::Check1)) FillMotorCombo(wb);
        RefreshMotorisation(wb);
    } else {
        MajMotorisation(wb);
    }
    return true;
}

void registerPowerPanels(Workbench& wb) {
    wb.panelRefresh[button::CalcMot] = [](Workbench& w) {
        CALC08(w);
        PowerSweeps(w);
        MajMotorisation(w);
    };
    wb.panelRefresh[button::Motorisation] = OpenMotorisation;
    wb.panelRefresh[button::Servos] = Calc_Servos;
}

}  // namespace tarvokin
