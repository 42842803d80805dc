// A workbench with the windows' logic installed, as every program makes it:
// for test fixtures that hold one as a member.
#pragma once

#include <filesystem>

#include "core/workbench.h"
#include "entry/window_logic.h"

namespace tarvokin::test {

struct InstalledWorkbench : Workbench {
    explicit InstalledWorkbench(std::filesystem::path home) : Workbench(std::move(home)) { InstallWindowLogic(*this); }
};

}  // namespace tarvokin::test
