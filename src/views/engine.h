// The whole 3D engine: tables, vector/matrix/colour arithmetic, scene
// operations, the frame and the drawing surface it paints on.
#pragma once

#include "views/draw_surface.h"
#include "views/engine_math.h"
#include "views/engine_render.h"
#include "views/engine_scene.h"
#include "views/engine_tables.h"
