#include "support/Browser.h"

#include <cstdio>
#include <stdexcept>

#include <unistd.h>

#include "JSON/JSON.h"

namespace quorvane::testing {
namespace {

using Object = AnyCodable::Dictionary;
using List = AnyCodable::List;

const Object& objectIn(const Object& object, const char* key) {
    return std::get<Object>(object.at(key).value);
}

const std::string& textIn(const Object& object, const char* key) {
    return std::get<std::string>(object.at(key).value);
}

std::string quoted(const std::string& text) {
    return json::writeExactly(AnyCodable(text));
}

} // namespace

Browser::Browser() {
    const std::string home = folder.path();
    std::vector<std::string> command{"chromium",
                                     "--headless",
                                     "--disable-gpu",
                                     "--disable-quic",
                                     "--no-first-run",
                                     "--disable-background-networking",
                                     "--disable-component-update",
                                     "--disable-sync",
                                     "--disable-dev-shm-usage",
                                     "--user-data-dir=" + home + "/profile"};
    if (::geteuid() == 0) {
        command.emplace_back("--no-sandbox");
    }
    tools = std::make_unique<DevTools>(
        command, std::vector<std::string>{"HOME=" + home, "TMPDIR=" + home, "XDG_CONFIG_HOME=" + home,
                                          "XDG_CACHE_HOME=" + home});
    const Object target = tools->call("Target.createTarget", {{"url", "about:blank"}});
    const Object attached =
        tools->call("Target.attachToTarget", {{"targetId", target.at("targetId")}, {"flatten", true}});
    tools->use(textIn(attached, "sessionId"));
    for (const char* domain : {"Page.enable", "Runtime.enable", "Log.enable"}) {
        tools->call(domain);
    }
}

Browser::~Browser() {
    try {
        tools->use("");
        tools->call("Browser.close");
        tools->waitForEnd();
    } catch (const std::exception&) {
        // It is killed instead.
    }
}

void Browser::open(const std::string& address) {
    const Object answer = tools->call("Page.navigate", {{"url", AnyCodable(address)}});
    if (answer.contains("errorText")) {
        throw std::runtime_error(address + ": " + textIn(answer, "errorText"));
    }
}

void Browser::show(int width, int height, const std::string& scheme) {
    tools->call("Emulation.setDeviceMetricsOverride",
                {{"width", width}, {"height", height}, {"deviceScaleFactor", 1}, {"mobile", false}});
    tools->call("Emulation.setEmulatedMedia",
                {{"features", List{Object{{"name", "prefers-color-scheme"}, {"value", AnyCodable(scheme)}}}}});
}

AnyCodable Browser::evaluate(const std::string& expression) {
    const Object answer = tools->call(
        "Runtime.evaluate", {{"expression", AnyCodable(expression)}, {"awaitPromise", true}, {"returnByValue", true}});
    if (answer.contains("exceptionDetails")) {
        throw std::runtime_error(expression + ": " + json::writeExactly(answer.at("exceptionDetails")));
    }
    const Object& result = objectIn(answer, "result");
    return result.contains("value") ? result.at("value") : AnyCodable();
}

std::string Browser::text(const std::string& expression) {
    return std::get<std::string>(evaluate("String(" + expression + ")").value);
}

bool Browser::is(const std::string& expression) {
    return std::get<bool>(evaluate("Boolean(" + expression + ")").value);
}

bool Browser::comesTrue(const std::string& expression) {
    return std::get<bool>(evaluate("new Promise((done) => { const end = Date.now() + 60000; const look = () => {"
                                   " let isTrue = false; try { isTrue = Boolean(" +
                                   expression +
                                   "); } catch {} if (isTrue || Date.now() > end) { done(isTrue); }"
                                   " else { setTimeout(look, 20); } }; look(); })")
                              .value);
}

void Browser::mouse(const std::string& type, double x, double y, int buttons) {
    const char* button = type == "mouseMoved" && buttons == 0 ? "none" : "left";
    tools->call(
        "Input.dispatchMouseEvent",
        {{"type", AnyCodable(type)}, {"x", x}, {"y", y}, {"button", button}, {"buttons", buttons}, {"clickCount", 1}});
}

void Browser::click(const std::string& selector) {
    drag(selector, 0, 0, 0, 0);
}

void Browser::drag(const std::string& selector, int x, int y, int dx, int dy) {
    const std::string place =
        text("(() => { const element = document.querySelector(" + quoted(selector) +
             "); element.scrollIntoView({block: 'center', inline: 'center', behavior: 'instant'});"
             " const box = element.getBoundingClientRect();"
             " const [x, y] = [box.x + box.width / 2, box.y + box.height / 2];"
             " const top = document.elementFromPoint(x, y);"
             " if (!element.contains(top)) { throw new Error('it is covered'); }"
             " return x + ' ' + y; })()");
    double middleX = 0;
    double middleY = 0;
    if (std::sscanf(place.c_str(), "%lf %lf", &middleX, &middleY) != 2) {
        throw std::runtime_error(selector + " has no place");
    }
    mouse("mouseMoved", middleX + x, middleY + y, 0);
    mouse("mousePressed", middleX + x, middleY + y, 1);
    if (dx != 0 || dy != 0) {
        mouse("mouseMoved", middleX + x + dx, middleY + y + dy, 1);
    }
    mouse("mouseReleased", middleX + x + dx, middleY + y + dy, 0);
}

void Browser::press(const std::string& key, int code, const std::string& text) {
    for (const char* type : {"keyDown", "keyUp"}) {
        tools->call("Input.dispatchKeyEvent", {{"type", type},
                                               {"key", AnyCodable(key)},
                                               {"code", AnyCodable(key)},
                                               {"text", AnyCodable(text)},
                                               {"windowsVirtualKeyCode", code}});
    }
}

void Browser::type(const std::string& selector, const std::string& text) {
    constexpr int deleteKey = 46;
    click(selector);
    std::ignore = evaluate("document.querySelector(" + quoted(selector) + ").select()");
    press("Delete", deleteKey, "");
    tools->call("Input.insertText", {{"text", AnyCodable(text)}});
}

void Browser::enter(const std::string& selector, const std::string& text) {
    constexpr int enterKey = 13;
    type(selector, text);
    press("Enter", enterKey, "\r");
}

void Browser::choose(const std::string& selector, const std::string& value) {
    std::ignore = evaluate("(() => { const list = document.querySelector(" + quoted(selector) + "); list.value = " +
                           quoted(value) + "; list.dispatchEvent(new Event('change', {bubbles: true})); })()");
}

std::vector<std::string> Browser::complaints() {
    std::ignore = evaluate("0");
    std::vector<std::string> texts;
    for (const Object& event : tools->takeEvents()) {
        const std::string& method = textIn(event, "method");
        if (method == "Log.entryAdded") {
            texts.push_back(textIn(objectIn(objectIn(event, "params"), "entry"), "text"));
        } else if (method == "Runtime.exceptionThrown" || method == "Runtime.consoleAPICalled") {
            texts.push_back(json::writeExactly(event.at("params")));
        }
    }
    return texts;
}

} // namespace quorvane::testing
