#include "Internal/Views/Devices/PictureCamera.h"

#include <utility>

#include "Internal/Views/Devices/HeldUp.h"
#include "Internal/Views/FrameImage.h"
#include "Platform/Platform.h"
#include "Platform/Qt/QtImage.h"

namespace quorvane::capture {

PictureCamera::PictureCamera(std::shared_ptr<const platform::Image> thePicture, const FileCameras::Options& theOptions)
    : mainQueue(platform::current().mainQueue()),
      picture(std::move(thePicture)),
      options(theOptions),
      frames(mainQueue) {}

void PictureCamera::start(FrameHandler frame, FailureHandler failed) {
    running = true;
    const QImage& pixels = static_cast<const platform::qt::QtImage&>(*picture).pixels();
    frames.start(frameOf(options.isHeldUp ? heldUp(pixels, paperOf(pixels)) : pixels), std::move(frame),
                 options.lasting, std::move(failed));
}

void PictureCamera::stop() {
    running = false;
    frames.stop();
}

void PictureCamera::takePhoto(bool /*flash*/, PhotoHandler completion) {
    mainQueue.post([taken = picture, completion = std::move(completion)] { completion(taken); });
}

} // namespace quorvane::capture
