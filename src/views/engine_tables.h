// The silent error reporter of the 3D engine; the tables themselves are the
// scene state of the run.
#pragma once

#include "core/scene_state.h"

namespace tarvokin {

// The error reporter: takes the code, shows nothing. The operation goes on.
void ReportEngineError(Engine& engine, int code);
// The text of a code ("Bad camera settings!"...), empty for an unknown one.
const char* EngineErrorText(int code);

}  // namespace tarvokin
