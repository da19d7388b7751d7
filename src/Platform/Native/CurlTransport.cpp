#include "Platform/Native/CurlTransport.h"

#include <utility>

#include "Platform/MainQueue.h"
#include "Platform/Native/CurlWorker.h"
#include "Platform/Native/RequestCheck.h"

namespace quorvane::platform::native {

CurlTransport::CurlTransport(MainQueue& theQueue, CurlOptions theOptions)
    : queue(theQueue), options(std::move(theOptions)) {}

CurlTransport::~CurlTransport() {
    close();
}

void CurlTransport::Waiting::complete(std::uint64_t number, Result result) {
    const auto found = completions.find(number);
    if (found == completions.end()) {
        return;
    }
    const Completion completion = std::move(found->second);
    completions.erase(found);
    completion(std::move(result));
}

void CurlTransport::answer(std::uint64_t number, Result result) {
    queue.post([weak = std::weak_ptr(waiting), number, result = std::move(result)]() mutable {
        if (const auto owner = weak.lock()) {
            owner->complete(number, std::move(result));
        }
    });
}

void CurlTransport::send(HTTPRequest request, Completion completion) {
    if (closed) {
        return;
    }
    const std::uint64_t number = ++lastNumber;
    waiting->completions.emplace(number, std::move(completion));
    const CurlAddress& address = addresses.read(request.url);
    if (std::optional<TransportError> refusal = refusalOf(request, address)) {
        answer(number, std::move(*refusal));
        return;
    }
    if (!worker) {
        worker = std::make_unique<CurlWorker>(
            options, [this](std::uint64_t answered, Result result) { answer(answered, std::move(result)); });
    }
    worker->add(number, std::move(request), address);
}

void CurlTransport::close() {
    closed = true;
    worker.reset();
    // Moved out first: a completion that is destroyed may come back here.
    const auto dropped = std::exchange(waiting->completions, {});
}

} // namespace quorvane::platform::native
