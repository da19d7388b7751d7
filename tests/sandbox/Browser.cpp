#include "sandbox/Browser.h"

#include <csignal>
#include <cstdio>
#include <stdexcept>

#include <unistd.h>

#include "JSON/JSON.h"
#include "sandbox/RawClient.h"

namespace quorvane::sandbox::test {
namespace {

using Object = AnyCodable::Dictionary;
using List = AnyCodable::List;

/// Milliseconds; a browser may start slowly on a busy machine.
constexpr int patience = 120'000;
constexpr int longestWait = 60'000;

const Object& objectIn(const AnyCodable& value) {
    return std::get<Object>(value.value);
}

const std::string& textIn(const AnyCodable& value) {
    return std::get<std::string>(value.value);
}

/// The port that the driver says it listens on.
int portOf(const Program& driver) {
    while (true) {
        const std::string line = driver.readOutputLine();
        const auto found = line.find("successfully on port ");
        int port = 0;
        if (found != std::string::npos && std::sscanf(line.c_str() + found, "successfully on port %d", &port) == 1) {
            return port;
        }
        if (line.empty()) {
            throw std::runtime_error("chromedriver does not start: " + driver.restOfErrors());
        }
    }
}

} // namespace

Browser::Browser() {
    const std::string home = folder.path();
    driver = std::make_unique<Program>(
        std::vector<std::string>{"chromedriver", "--port=0"},
        std::vector<std::string>{"HOME=" + home, "TMPDIR=" + home, "XDG_CONFIG_HOME=" + home, "XDG_CACHE_HOME=" + home},
        patience);
    port = portOf(*driver);
    List arguments{"--headless",
                   "--disable-gpu",
                   "--disable-quic",
                   "--no-first-run",
                   "--disable-sync",
                   "--disable-background-networking",
                   "--disable-component-update",
                   "--user-data-dir=" + home + "/profile"};
    if (::geteuid() == 0) {
        arguments.emplace_back("--no-sandbox");
    }
    const Object options{{"args", std::move(arguments)}};
    const Object asked{{"browserName", "chrome"},
                       {"goog:chromeOptions", options},
                       {"goog:loggingPrefs", Object{{"browser", "ALL"}}},
                       {"timeouts", Object{{"script", longestWait}}}};
    const AnyCodable made = call("POST", "/session", {{"capabilities", Object{{"alwaysMatch", asked}}}});
    session = "/session/" + textIn(objectIn(made).at("sessionId"));
}

Browser::~Browser() {
    try {
        call("DELETE", session);
        driver->signal(SIGTERM);
        driver->wait();
    } catch (const std::exception&) {
        // The driver is killed with its process.
    }
}

void Browser::open(const std::string& address) {
    call("POST", session + "/url", {{"url", address}});
}

void Browser::show(int width, int height, const std::string& scheme) {
    const auto devTools = [this](const char* command, Object parameters) {
        call("POST", session + "/goog/cdp/execute", {{"cmd", command}, {"params", std::move(parameters)}});
    };
    devTools("Emulation.setDeviceMetricsOverride",
             {{"width", width}, {"height", height}, {"deviceScaleFactor", 1}, {"mobile", false}});
    devTools("Emulation.setEmulatedMedia",
             {{"features", List{Object{{"name", "prefers-color-scheme"}, {"value", AnyCodable(scheme)}}}}});
}

AnyCodable Browser::run(const std::string& script) const {
    return call("POST", session + "/execute/sync", {{"script", AnyCodable(script)}, {"args", List()}});
}

std::string Browser::text(const std::string& expression) const {
    return textIn(run("return String(" + expression + ")"));
}

bool Browser::is(const std::string& expression) const {
    return std::get<bool>(run("return Boolean(" + expression + ")").value);
}

bool Browser::comesTrue(const std::string& expression) const {
    const std::string script =
        "const done = arguments[0]; const end = Date.now() + " + std::to_string(longestWait / 2) +
        "; const look = () => { let isTrue = false; try { isTrue = Boolean(" + expression +
        "); } catch {} if (isTrue || Date.now() > end) { done(isTrue); } else { setTimeout(look, 20); } }; look();";
    const AnyCodable result =
        call("POST", session + "/execute/async", {{"script", AnyCodable(script)}, {"args", List()}});
    return std::get<bool>(result.value);
}

void Browser::click(const std::string& selector) const {
    call("POST", element(selector) + "/click");
}

void Browser::drag(const std::string& selector, int x, int y, int dx, int dy) const {
    constexpr auto elementKey = "element-6066-11e4-a52e-4f735466cecf";
    const std::string path = element(selector);
    const Object origin{{elementKey, AnyCodable(path.substr(path.rfind('/') + 1))}};
    const List steps{
        Object{{"type", "pointerMove"}, {"origin", origin}, {"x", x}, {"y", y}},
        Object{{"type", "pointerDown"}, {"button", 0}},
        Object{{"type", "pointerMove"}, {"origin", "pointer"}, {"x", dx}, {"y", dy}},
        Object{{"type", "pointerUp"}, {"button", 0}},
    };
    call("POST", session + "/actions",
         {{"actions", List{Object{{"type", "pointer"}, {"id", "mouse"}, {"actions", steps}}}}});
}

void Browser::type(const std::string& selector, const std::string& text) const {
    const std::string path = element(selector);
    call("POST", path + "/clear");
    call("POST", path + "/value", {{"text", AnyCodable(text)}});
}

std::vector<std::string> Browser::console() const {
    const AnyCodable entries = call("POST", session + "/se/log", {{"type", "browser"}});
    std::vector<std::string> messages;
    for (const AnyCodable& entry : std::get<List>(entries.value)) {
        messages.push_back(textIn(objectIn(entry).at("message")));
    }
    return messages;
}

AnyCodable Browser::call(const std::string& method, const std::string& path, const Object& body) const {
    const std::string text = method == "POST" ? json::writeExactly(body) : "";
    RawConnection connection(port, patience);
    connection.send(method + " " + path +
                    " HTTP/1.1\r\nHost: localhost\r\nContent-Type: application/json\r\nContent-Length: " +
                    std::to_string(text.size()) + "\r\n\r\n" + text);
    const RawReply reply = connection.readAnswer();
    AnyCodable value = objectIn(json::readExactly(reply.body())).at("value");
    if (reply.status() != 200) {
        throw std::runtime_error(method + " " + path + ": " + textIn(objectIn(value).at("message")));
    }
    return value;
}

std::string Browser::element(const std::string& selector) const {
    const AnyCodable found =
        call("POST", session + "/element", {{"using", "css selector"}, {"value", AnyCodable(selector)}});
    return session + "/element/" + textIn(objectIn(found).begin()->second);
}

} // namespace quorvane::sandbox::test
