// A plan written as a file at true scale, in millimetres: SVG for browsers
// and drawing programs, DXF (ASCII, release 12) for CAD and cutting tools.
// Layers are kept in both, in drawing order.
#pragma once

#include <filesystem>
#include <string>

#include "views/plan.h"

namespace tarvokin {

// SVG text (UTF-8): width and height in mm, one user unit a millimetre, y
// turned downwards as SVG has it. Shapes are filled polygons, dashed lines
// carry a dash pattern, labels keep their lines and anchors.
std::string PlanToSvg(const Plan& plan);

// DXF bytes (Latin-1, code page ANSI_1252): LINE for segments, closed or
// open POLYLINE for polylines and for the outline of filled shapes, one TEXT
// per line of a label; layers CONTOURS, CONSTRUCTION, REPERES, TEXTES;
// dashed lines on the DASHED line type.
std::string PlanToDxf(const Plan& plan);

// Write beside, then replace: a failed write leaves the previous file whole.
// False when the file could not be written.
bool SavePlanSvg(const Plan& plan, const std::filesystem::path& file);
bool SavePlanDxf(const Plan& plan, const std::filesystem::path& file);

}  // namespace tarvokin
