// Lighting of one point: spot cone, diffuse, mirror highlight, distance
// fall-off and fog, with two ways of mixing the face colour in. There is no
// ambient term: with colour correction on, a face turned from every light is
// black; with it off, a face of reflectivity 0 keeps its own colour, lit or not.
#include <algorithm>

#include "views/engine_render.h"

namespace tarvokin {

namespace {

float Clamp01(float v) { return std::clamp(v, 0.0f, 1.0f); }
float NotNegative(float v) { return v < 0.0f ? 0.0f : v; }

}  // namespace

EngineColour Shade(Engine& engine, Vector3 point, Vector3 normal, int face, int camera) {
    const CameraRecord& cam = engine.Cameras[(camera >= 0 && camera <= kEngineLimit) ? camera : 0];
    const FaceRecord& surface = engine.Faces[(face >= 0 && face <= kEngineLimit) ? face : 0];

    EngineColour total;
    for (int l = engine.LightFirst; l <= engine.lightLast(); ++l) {
        const LightRecord& light = engine.Lights[l];
        if (!light.Enabled) continue;

        float spot = 1.0f;
        if (light.ConeOuter >= 0.0f) {
            const float c = NotNegative(CosAngle(DirectionFromAngles(light.Direction), point - light.Position));
            if (light.ConeOuter == light.ConeInner)
                ReportEngineError(engine, engine_error::BadLight);
            else
                spot = Clamp01((light.ConeOuter - c) / (light.ConeOuter - light.ConeInner));
        }

        const float diffuse = NotNegative(CosAngle(light.Position - point, normal));

        float mirror = 0.0f;
        if (cam.Specular) {
            const Vector3 r = Reflect(point - light.Position, normal);
            mirror = NotNegative(CosAngle(r, cam.Position - point));
        }

        float falloff = 1.0f;
        if (cam.DepthEffects) {
            if (light.Near != light.Far)
                falloff = Clamp01((light.Far - Distance(point, light.Position)) / (light.Far - light.Near));
            else
                ReportEngineError(engine, engine_error::BadLight);
        }

        if (cam.ColourCorrection)
            total = total + (surface.Colour * diffuse + light.Colour * (mirror * surface.Reflectivity)) * (spot * falloff);
        else
            total = total + light.Colour * ((mirror * surface.Reflectivity + diffuse) * falloff * spot);
    }
    total = {std::min<std::int16_t>(total.R, 255), std::min<std::int16_t>(total.G, 255),
             std::min<std::int16_t>(total.B, 255)};

    float fog = 1.0f;
    if (cam.DepthEffects) {
        if (cam.FogFar == cam.FogNear)
            ReportEngineError(engine, engine_error::BadCamera);
        else
            fog = Clamp01((cam.FogFar - Distance(point, cam.Position)) / (cam.FogFar - cam.FogNear));
    }

    // The flag called correction is the one that shows the plain lit total;
    // without it the face's own colour is blended towards the light by its
    // reflectivity.
    if (cam.ColourCorrection) return Lerp(cam.Background, total, fog);
    return Lerp(cam.Background, Lerp(surface.Colour, total, surface.Reflectivity), fog);
}

}  // namespace tarvokin
