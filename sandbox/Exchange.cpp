#include "sandbox/Exchange.h"

#include <algorithm>
#include <charconv>

#include "sandbox/RequestHead.h"

namespace quorvane::sandbox {
namespace {

constexpr std::string_view blankLine = "\r\n\r\n";

int statusOf(std::string_view answer) {
    constexpr std::string_view version = "HTTP/1.1 ";
    int status = 0;
    if (answer.starts_with(version)) {
        std::from_chars(answer.data() + version.size(), answer.data() + answer.size(), status);
    }
    return status;
}

} // namespace

ssize_t Exchange::read(char* bytes, std::size_t size) {
    if (state != ReadState::head && state != ReadState::body) {
        return -1;
    }
    if (state == ReadState::head && head.size() >= longestHead) {
        state = ReadState::headTooLong;
        return -1;
    }
    const long count = connection.read(bytes, size);
    if (count <= 0) {
        state = count == 0 ? ReadState::ended : ReadState::tooSlow;
        isAbandoned = connection.isStopped();
    } else if (state == ReadState::head) {
        head.append(bytes, static_cast<std::size_t>(count));
    }
    return count;
}

ssize_t Exchange::write(const char* bytes, std::size_t size) {
    answer.append(bytes, size);
    return static_cast<ssize_t>(size);
}

void Exchange::get_remote_ip_and_port(std::string& ip, int& port) const {
    ip = "127.0.0.1";
    port = 0;
}

void Exchange::get_local_ip_and_port(std::string& ip, int& port) const {
    get_remote_ip_and_port(ip, port);
}

void Exchange::acceptHead(httplib::Request& request, std::size_t longestBody) {
    state = ReadState::body;
    record.method = request.method;
    record.target = request.target;
    // The server adds these four to what arrived.
    for (const char* name : {"REMOTE_ADDR", "REMOTE_PORT", "LOCAL_ADDR", "LOCAL_PORT"}) {
        request.headers.erase(name);
    }
    record.headers.assign(request.headers.begin(), request.headers.end());
    try {
        bodySize = bodySizeOf(head, request, longestBody);
    } catch (const Refusal& refusal) {
        problem = refusal;
        // What follows the head is not read, so it cannot be told from a next request.
        request.headers.erase("Connection");
        request.headers.emplace("Connection", "close");
    }
    if (!problem && request.has_header("Expect")) {
        connection.send("HTTP/1.1 100 Continue\r\n\r\n");
    }
    simplify(request);
}

bool Exchange::readBody() {
    record.body.resize(bodySize);
    std::size_t size = 0;
    while (size < bodySize) {
        const auto count = read(record.body.data() + size, bodySize - size);
        if (count <= 0) {
            record.body.resize(size);
            return false;
        }
        size += static_cast<std::size_t>(count);
    }
    return true;
}

bool Exchange::finish(bool mayContinue, std::string_view service,
                      const std::function<void(const RequestRecord&)>& sink) {
    if (isAbandoned || (head.empty() && state == ReadState::ended)) {
        return false;
    }
    const bool wasRead = state == ReadState::body && !problem;
    replaceUnreadable();
    cutAnswer();
    record.service = service;
    record.status = statusOf(answer);
    record.bytes = answer.size();
    record.fault = fault ? fault->name() : "";
    record.duration = std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - began);
    if (!isUnrecorded) {
        sink(record);
    }
    connection.send(answer);
    using Kind = Fault::Kind;
    const Kind kind = fault ? fault->kind : Kind::none;
    if (kind == Kind::reset) {
        connection.end(Connection::Ending::reset);
    }
    const bool isCut = kind == Kind::drop || kind == Kind::reset || kind == Kind::lostReply ||
                       kind == Kind::truncateBody || kind == Kind::truncateHeaders;
    return mayContinue && wasRead && !isCut;
}

void Exchange::replaceUnreadable() {
    if (state == ReadState::headTooLong) {
        answer = lastAnswer(Refusal(431, "head_too_large", "The head of a request has at most 32 KiB."));
    } else if (state == ReadState::tooSlow) {
        answer = lastAnswer(Refusal(408, "request_timeout", "The request did not arrive in time."));
    } else if (answer.empty() || state == ReadState::ended) {
        answer = lastAnswer(Refusal(400, "bad_request", "The request is not complete."));
    }
}

void Exchange::cutAnswer() {
    if (!fault) {
        return;
    }
    const std::size_t headSize = std::min(answer.size(), answer.find(blankLine) + blankLine.size());
    const std::size_t rest = answer.size() - headSize;
    switch (fault->kind) {
        case Fault::Kind::drop:
        case Fault::Kind::reset:
        case Fault::Kind::lostReply:
            answer.clear();
            break;
        case Fault::Kind::truncateHeaders:
            answer.resize(std::min(fault->bytes.value_or(headSize), headSize - 2));
            break;
        case Fault::Kind::truncateBody:
            answer.resize(headSize + std::min(fault->bytes.value_or(rest / 2), rest - (rest > 0 ? 1 : 0)));
            break;
        default:
            break;
    }
}

std::string lastAnswer(const Refusal& refusal) {
    const Answer answer = answerFor(refusal);
    return "HTTP/1.1 " + std::to_string(answer.status) + " " + refusal.error +
           "\r\nConnection: close\r\nContent-Type: application/json\r\nContent-Length: " +
           std::to_string(answer.body.size()) + "\r\n\r\n" + answer.body;
}

} // namespace quorvane::sandbox
