#pragma once

#include <string_view>

#include "JSON/RawValues.h"

namespace quorvane {

/// Which levelling guide the camera shows: none, for a device held flat, for one held upright.
enum class QVPhotoLevelType : int { none, flat, vertical };

/// The shape drawn over the camera's picture to frame the subject.
enum class QVPhotoOverlayType : int { none, circle, circle_square, rectangle_horizontal, rectangle_vertical, square };

template <>
inline constexpr auto json::rawValues<QVPhotoLevelType> = json::textTable<QVPhotoLevelType>({
    {QVPhotoLevelType::none, "none"},
    {QVPhotoLevelType::flat, "flat"},
    {QVPhotoLevelType::vertical, "vertical"},
});
template <>
inline constexpr std::string_view json::typeName<QVPhotoLevelType> = "photo level type";
template <>
inline constexpr auto json::rawValues<QVPhotoOverlayType> = json::textTable<QVPhotoOverlayType>({
    {QVPhotoOverlayType::none, "none"},
    {QVPhotoOverlayType::circle, "circle"},
    {QVPhotoOverlayType::circle_square, "circle_square"},
    {QVPhotoOverlayType::rectangle_horizontal, "rectangle_horizontal"},
    {QVPhotoOverlayType::rectangle_vertical, "rectangle_vertical"},
    {QVPhotoOverlayType::square, "square"},
});
template <>
inline constexpr std::string_view json::typeName<QVPhotoOverlayType> = "photo overlay type";

} // namespace quorvane
