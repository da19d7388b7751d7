#include "Internal/Views/Devices/PictureCamera.h"

#include <utility>

#include "Internal/Views/FrameImage.h"
#include "Platform/Platform.h"
#include "Platform/Qt/QtImage.h"

namespace quorvane::capture {

PictureCamera::PictureCamera(std::shared_ptr<const platform::Image> thePicture,
                             std::optional<std::chrono::nanoseconds> theLasting)
    : mainQueue(platform::current().mainQueue()),
      picture(std::move(thePicture)),
      lasting(theLasting),
      frames(mainQueue) {}

void PictureCamera::start(FrameHandler frame, FailureHandler failed) {
    running = true;
    frames.start(frameOf(static_cast<const platform::qt::QtImage&>(*picture).pixels()), std::move(frame), lasting,
                 std::move(failed));
}

void PictureCamera::stop() {
    running = false;
    frames.stop();
}

void PictureCamera::takePhoto(bool /*flash*/, PhotoHandler completion) {
    mainQueue.post([taken = picture, completion = std::move(completion)] { completion(taken); });
}

} // namespace quorvane::capture
