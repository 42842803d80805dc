#include "core/scene_state.h"

#include <chrono>

namespace tarvokin {

namespace {
constexpr std::size_t kTableSize = kEngineLimit + 1;  // index 0 is "none"
}

Engine::Engine()
    : Meshes(kTableSize),
      Cameras(kTableSize),
      Lights(kTableSize),
      Faces(kTableSize),
      ObjectVertices(kTableSize),
      WorldVertices(kTableSize),
      ViewVertices(kTableSize),
      ScreenVertices(kTableSize),
      VertexNormals(kTableSize),
      VertexColours(kTableSize),
      FaceColours(kTableSize),
      // One spare place so that a full list still ends with a 0.
      DrawList(kTableSize + 1),
      SortKeys(kTableSize + 1),
      pivotRandom(static_cast<unsigned>(std::chrono::steady_clock::now().time_since_epoch().count())) {}

}  // namespace tarvokin
