// The lighting of one point: the two colour branches, spot, fall-off, fog and
// mirror, with hand-computed colours (every scaling truncates).
#include <gtest/gtest.h>

#include <memory>

#include "views/engine.h"

namespace tarvokin {
namespace {

// A face of colour (200, 100, 50) lit by one white light; the point shaded is
// the origin with its normal up, unless a test says otherwise.
struct Lit {
    std::unique_ptr<Engine> engine = std::make_unique<Engine>();
    Engine& e = *engine;
    int camera = AddCamera(e);
    int light = AddLight(e);
    int face = 1;

    Lit(float reflectivity = 0.0f) {
        e.Faces[face].Colour = {200, 100, 50};
        e.Faces[face].Reflectivity = reflectivity;
        e.Lights[light].Position = {0, 100, 0};
        e.Cameras[camera].Position = {0, 100, 0};
    }
    CameraRecord& cam() { return e.Cameras[camera]; }
    LightRecord& lamp() { return e.Lights[light]; }
    EngineColour at(Vector3 point = {}, Vector3 normal = {0, 1, 0}) { return Shade(e, point, normal, face, camera); }
};

TEST(Shade, WithoutCorrectionAFaceOfZeroReflectivityShowsItsOwnColourFogged) {
    Lit s(0.0f);
    EXPECT_EQ(s.at({}, {0, -1, 0}), (EngineColour{200, 100, 50}));  // turned away: no difference
    s.cam().DepthEffects = true;
    s.cam().FogNear = 0;
    s.cam().FogFar = 200;  // the camera 100 away: half fogged to black
    EXPECT_EQ(s.at(), (EngineColour{100, 50, 25}));
    s.lamp().Near = s.lamp().Far = 7;
    s.cam().FogNear = s.cam().FogFar;
    EXPECT_EQ(s.at(), (EngineColour{200, 100, 50}));  // no fog, no fall-off after the reports
    EXPECT_EQ(s.e.lastErrorCode, engine_error::BadCamera);
}

TEST(Shade, WithCorrectionTheLitTotalIsShownAndThereIsNoAmbient) {
    Lit s(0.5f);
    s.cam().ColourCorrection = true;
    EXPECT_EQ(s.at(), (EngineColour{200, 100, 50}));  // face colour x diffuse 1
    // The light 60 degrees off the normal: diffuse 0.5.
    s.lamp().Position = {173.20508f, 100, 0};
    EXPECT_EQ(s.at(), (EngineColour{100, 50, 25}));
    EXPECT_EQ(s.at({}, {0, -1, 0}), (EngineColour{0, 0, 0}));
    // Two lights add up and the total stops at 255; a disabled one adds nothing.
    s.lamp().Position = {0, 100, 0};
    s.e.Lights[AddLight(s.e)].Enabled = false;
    s.e.Lights[AddLight(s.e)].Position = {0, 100, 0};
    EXPECT_EQ(s.at(), (EngineColour{255, 200, 100}));
}

TEST(Shade, SpotConeAndDistanceFallOff) {
    Lit s(1.0f);  // the lit total shown as it is
    // A spot straight down (X turned by 90 degrees); inner cosine 1 and outer
    // 0 make the spot factor the cosine off its axis.
    s.lamp().Direction = {0, 1.5707964f, 0};
    s.lamp().ConeInner = 1;
    s.lamp().ConeOuter = 0;
    EXPECT_EQ(s.at(), (EngineColour{255, 255, 255}));
    // 60 degrees off the axis: spot 0.5 and diffuse 0.5, 255 / 4.
    EXPECT_EQ(s.at({173.20508f, 0, 0}), (EngineColour{63, 63, 63}));
    // Above the lamp: outside the cone whatever the normal.
    EXPECT_EQ(s.at({0, 200, 0}, {0, -1, 0}), (EngineColour{0, 0, 0}));
    s.lamp().ConeOuter = s.lamp().ConeInner;
    EXPECT_EQ(s.at({173.20508f, 0, 0}), (EngineColour{127, 127, 127}));  // reported, spot left at 1
    EXPECT_EQ(s.e.lastErrorCode, engine_error::BadLight);

    s.lamp().ConeOuter = -1;
    s.cam().DepthEffects = true;
    s.cam().Position = {};  // no fog at the point itself
    s.lamp().Near = 0;
    s.lamp().Far = 400;
    EXPECT_EQ(s.at(), (EngineColour{191, 191, 191}));  // 100 of 400: 0.75
}

TEST(Shade, MirrorHighlightInBothBranches) {
    Lit s(1.0f);
    s.lamp().Colour = {100, 50, 0};  // straight above, as is the camera
    EXPECT_EQ(s.at(), (EngineColour{100, 50, 0}));
    s.cam().Specular = true;
    EXPECT_EQ(s.at(), (EngineColour{200, 100, 0}));  // mirror 1 + diffuse 1
    s.cam().Position = {100, 100, 0};                // 45 degrees off the reflected ray
    EXPECT_EQ(s.at(), (EngineColour{170, 85, 0}));
    s.cam().Position = {0, 100, 0};
    s.cam().ColourCorrection = true;
    // Face x diffuse 1 plus the light x mirror 1, held at 255.
    EXPECT_EQ(s.at(), (EngineColour{255, 150, 50}));
}

}  // namespace
}  // namespace tarvokin
