#include "views/engine_tables.h"

namespace tarvokin {

void ReportEngineError(Engine& engine, int code) {
    // Deliberately silent: an overfull or oddly set scene still draws what it
    // can, and the caller sees a 0 from an Add. The code is kept for tests.
    engine.lastErrorCode = code;
    ++engine.errorCount;
}

const char* EngineErrorText(int code) {
    switch (code) {
    case engine_error::MeshMemory: return "Unable to allocate memory for mesh!";
    case engine_error::CameraMemory: return "Unable to allocate memory for camera!";
    case engine_error::LightMemory: return "Unable to allocate memory for light!";
    case engine_error::BadCamera: return "Bad camera settings!";
    case engine_error::BadLight: return "Bad light settings!";
    default: return "";
    }
}

}  // namespace tarvokin
