#include "tools/demo/Account.h"

#include <algorithm>
#include <map>

#include "tools/Terminal.h"
#include "tools/Text.h"

namespace quorvane::tool {
namespace {

std::string statusText(const sandbox::RequestRecord& request) {
    return request.status == 0 ? "no answer" : std::to_string(request.status);
}

} // namespace

Account::Account(const sandbox::Sandbox& theService, Terminal& theTerminal)
    : service(theService), terminal(theTerminal) {}

void Account::output(std::string_view line) {
    const std::lock_guard lock(mutex);
    pending.emplace_back(line);
}

void Account::tell() {
    for (const sandbox::RequestRecord& request : collect()) {
        const Paint paint = request.status >= 200 && request.status < 400 ? Paint::good : Paint::bad;
        terminal.line("  " + padded(printable(request.service), 10) + padded(printable(request.method), 6) +
                      padded(printable(request.path()), 29) + terminal.painted(statusText(request), paint));
    }
    for (; linesTold < lines.size(); ++linesTold) {
        terminal.line("  " + padded("delegate", 10) + terminal.painted(printable(lines[linesTold]), Paint::faint));
    }
}

std::vector<sandbox::RequestRecord> Account::collect() {
    const std::vector<sandbox::RequestRecord> all = service.requests();
    std::vector<sandbox::RequestRecord> arrived(all.begin() + static_cast<std::ptrdiff_t>(requests.size()), all.end());
    requests.insert(requests.end(), arrived.begin(), arrived.end());
    return arrived;
}

void Account::tellRest() {
    const std::lock_guard lock(mutex);
    for (const std::string& line : pending) {
        terminal.log(line);
    }
    pending.clear();
}

std::string Account::requestSummary() const {
    std::map<std::string, std::size_t> counts;
    for (const auto& request : requests) {
        ++counts[statusText(request)];
    }
    std::string text;
    for (const auto& [status, count] : counts) {
        text += (text.empty() ? "" : ", ") + std::to_string(count) + " × " + status;
    }
    return counted(requests.size(), "request") + (text.empty() ? "" : ", answered " + text);
}

AnyCodable::Dictionary Account::document() const {
    AnyCodable::List requestList;
    for (const auto& request : requests) {
        requestList.emplace_back(AnyCodable::Dictionary{{"service", request.service},
                                                        {"method", request.method},
                                                        {"target", request.target},
                                                        {"status", request.status},
                                                        {"bytes", request.bytes},
                                                        {"milliseconds", request.duration.count()}});
    }
    AnyCodable::List log(lines.begin(), lines.end());
    return {{"requests", std::move(requestList)}, {"log", std::move(log)}};
}

void Account::onClientLocationUpdated(const platform::Location&, bool, QVLocationSource) {}

void Account::onError(QVStatus status) {
    lines.push_back("error: " + std::string(nameOf(status)));
}

void Account::onEventsReceived(const std::vector<std::shared_ptr<QVEvent>>&, const std::shared_ptr<QVUser>&) {}

void Account::onLocationUpdated(const platform::Location&, const std::shared_ptr<QVUser>&) {}

void Account::onLog(const std::string& message) {
    lines.push_back(message);
    const std::lock_guard lock(mutex);
    const auto printed = std::find(pending.begin(), pending.end(), message);
    if (printed != pending.end()) {
        pending.erase(printed);
    }
}

} // namespace quorvane::tool
