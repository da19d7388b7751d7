#include "benchmarks/API/PlainExchange.h"

#include <utility>

#include <curl/curl.h>

namespace quorvane {

namespace {

std::size_t collect(char* bytes, std::size_t size, std::size_t count, void* body) {
    static_cast<std::string*>(body)->append(bytes, size * count);
    return size * count;
}

curl_slist* makeHeaders(const std::vector<std::string>& lines) {
    curl_slist* headers = nullptr;
    for (const std::string& line : lines) {
        headers = curl_slist_append(headers, line.c_str());
    }
    return headers;
}

} // namespace

PlainExchange::PlainExchange(platform::NativeMainQueue& theQueue, std::string theUrl,
                             std::vector<std::string> theHeaders)
    : queue(theQueue), url(std::move(theUrl)), lines(std::move(theHeaders)), worker([this] { work(); }) {}

PlainExchange::~PlainExchange() {
    {
        const std::lock_guard lock(mutex);
        stopping = true;
    }
    changed.notify_one();
    worker.join();
}

void PlainExchange::request(std::function<void(std::int64_t)> done) {
    {
        const std::lock_guard lock(mutex);
        waiting = std::move(done);
    }
    changed.notify_one();
}

void PlainExchange::work() {
    CURL* const curl = curl_easy_init();
    std::string body;
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, &collect);
    curl_easy_setopt(curl, CURLOPT_WRITEDATA, &body);
    curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(curl, CURLOPT_TIMEOUT_MS, 10'000L);
    for (;;) {
        std::unique_lock lock(mutex);
        changed.wait(lock, [this] { return stopping || waiting; });
        if (stopping) {
            break;
        }
        auto done = std::move(*waiting);
        waiting.reset();
        lock.unlock();
        body.clear();
        curl_slist* const headers = makeHeaders(lines);
        curl_easy_setopt(curl, CURLOPT_HTTPHEADER, headers);
        curl_easy_setopt(curl, CURLOPT_URL, url.c_str());
        const CURLcode code = curl_easy_perform(curl);
        curl_slist_free_all(headers);
        queue.post([this, text = code == CURLE_OK ? body : std::string(), done = std::move(done)] {
            std::int64_t count = 0;
            const bool parsed = parser.parse(text)["count"].get(count) == simdjson::SUCCESS;
            done(parsed ? count : 0);
        });
    }
    curl_easy_cleanup(curl);
}

} // namespace quorvane
