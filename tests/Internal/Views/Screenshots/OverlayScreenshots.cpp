#include <tuple>

#include "Internal/Views/CameraOverlay/OverlayTest.h"
#include "Internal/Views/Screenshots/Screenshot.h"

namespace quorvane::capture {
namespace {

using LevelType = QVPhotoCaptureOptions::LevelType;
using OverlayType = QVPhotoCaptureOptions::OverlayType;

struct OverlayState {
    const char* name;
    OverlayType overlay = OverlayType::none;
    LevelType level = LevelType::none;
    /// What the accelerometer measures.
    double x = 0;
    double y = 0;
    bool flashIsOn = false;
    bool flashIsAllowed = true;
    bool hasCamera = true;
};

constexpr OverlayState states[] = {
    {.name = "plain"},
    {.name = "circle", .overlay = OverlayType::circle},
    {.name = "circle_square", .overlay = OverlayType::circle_square},
    {.name = "rectangle_horizontal", .overlay = OverlayType::rectangle_horizontal},
    {.name = "rectangle_vertical", .overlay = OverlayType::rectangle_vertical},
    {.name = "square", .overlay = OverlayType::square},
    {.name = "level_flat", .overlay = OverlayType::circle, .level = LevelType::flat, .x = 0.06, .y = 0.04},
    {.name = "not_level_flat", .overlay = OverlayType::circle, .level = LevelType::flat, .x = 0.3, .y = -0.2},
    {.name = "level_vertical", .overlay = OverlayType::square, .level = LevelType::vertical, .x = 0.02, .y = -0.98},
    {.name = "not_level_vertical", .level = LevelType::vertical, .x = -0.25, .y = -0.9},
    {.name = "flash_on", .overlay = OverlayType::square, .flashIsOn = true},
    {.name = "flash_dimmed", .overlay = OverlayType::square, .flashIsAllowed = false},
    {.name = "failed", .overlay = OverlayType::circle, .level = LevelType::flat, .hasCamera = false},
};

class OverlayScreenshots : public OverlayTest, public ::testing::WithParamInterface<std::tuple<OverlayState, QSize>> {};

TEST_P(OverlayScreenshots, AreKept) {
    const auto& [state, size] = GetParam();
    resize(size);
    options.photoOverlayType = state.overlay;
    options.photoLevelType = state.level;
    options.defaultFlashState = state.flashIsOn;
    options.allowFlashToggle = state.flashIsAllowed;
    cameras->hasCamera = state.hasCamera;
    show();
    if (state.level != LevelType::none) {
        hold(state.x, state.y);
    }
    for (const Surroundings surroundings : {Surroundings::light, Surroundings::dark}) {
        cameras->camera->show(scene(surroundings));
        settle();
        const QString name = QString("photo-%1-%2-%3").arg(state.name, textOf(size), nameOf(surroundings));
        keepScreenshot(picture(), name, size, window->effectiveDevicePixelRatio());
    }
}

INSTANTIATE_TEST_SUITE_P(Photo, OverlayScreenshots,
                         ::testing::Combine(::testing::ValuesIn(states), ::testing::ValuesIn(screenshotSizes)),
                         [](const auto& one) {
                             return std::string(std::get<0>(one.param).name) + "_" +
                                    textOf(std::get<1>(one.param)).toStdString();
                         });

} // namespace
} // namespace quorvane::capture
