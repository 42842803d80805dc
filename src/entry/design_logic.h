// The buttons and the slider of the design window F_3D: panels added and
// deleted on the wing and the stabiliser, the geometry panels opened from its
// tabs, the centre-of-gravity slider, the motor tab computed as it shows.
#pragma once

namespace tarvokin {

class Workbench;

// The centre-of-gravity slider moves the static margin in tenths of a percent.
inline constexpr int kMarginSteps = 10;
// The motor tab of F_3D.SSTab1.
inline constexpr int kMotorTab = 5;

void installDesignLogic(Workbench& wb);

}  // namespace tarvokin
