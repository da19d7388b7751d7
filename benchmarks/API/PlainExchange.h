#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include <simdjson.h>

#include "Platform/Native/NativeMainQueue.h"

namespace quorvane {

/// The least that an exchange can be: libcurl on a worker thread with one reused handle, which gets each request's
/// address and headers (a program's token changes, so their list is made each time), a hop to the main queue, and a
/// parse of the body there.
class PlainExchange {
public:
    /// @p theHeaders are the lines of its requests' headers.
    PlainExchange(platform::NativeMainQueue& theQueue, std::string theUrl, std::vector<std::string> theHeaders);
    PlainExchange(const PlainExchange&) = delete;
    PlainExchange& operator=(const PlainExchange&) = delete;
    ~PlainExchange();

    /// Calls @p done on the main queue with the number of objects in the answer.
    void request(std::function<void(std::int64_t)> done);

private:
    void work();

    platform::NativeMainQueue& queue;
    const std::string url;
    const std::vector<std::string> lines;
    std::mutex mutex;
    std::condition_variable changed;
    std::optional<std::function<void(std::int64_t)>> waiting;
    bool stopping = false;
    simdjson::dom::parser parser;
    std::thread worker;
};

} // namespace quorvane
