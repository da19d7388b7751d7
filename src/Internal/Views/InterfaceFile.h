#pragma once

#include <QQuickItem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "Internal/Views/ItemPointer.h"

QT_BEGIN_NAMESPACE
class QQmlComponent;
class QQmlEngine;
QT_END_NAMESPACE

namespace quorvane::capture {

/// A QML file of the library's own resource bundle, named after the class that loads it. What the class works with are
/// named items: its connections.
class InterfaceFile {
public:
    /// None when the bundle has no file of that name. A file that does not compile is a fatal error.
    [[nodiscard]] static std::optional<InterfaceFile> named(const std::string& name);

    /// A new tree of items; null when the file's outermost object is no item.
    [[nodiscard]] ItemPointer<QQuickItem> instantiate() const;

private:
    InterfaceFile(std::shared_ptr<QQmlEngine> theEngine, std::shared_ptr<QQmlComponent> theComponent);

    std::shared_ptr<QQmlEngine> engine;
    std::shared_ptr<QQmlComponent> component;
};

/// The object called @p name among the descendants of @p root, or @p root itself. Having none of that kind is a fatal
/// error.
[[nodiscard]] QObject& connectionNamed(QQuickItem& root, const char* name, const QMetaObject& kind);

template <class T = QQuickItem>
[[nodiscard]] T& connection(QQuickItem& root, const char* name) {
    return static_cast<T&>(connectionNamed(root, name, T::staticMetaObject));
}

/// Calls @p action when the item called @p name emits its signal `tapped()`. Having none is a fatal error. The action
/// must outlive the tree below @p root or hold what it needs weakly.
void connectAction(QQuickItem& root, const char* name, std::function<void()> action);

/// The path of a picture in the library's bundle, as Qt opens it.
[[nodiscard]] std::string bundlePath(const std::string& fileName);

} // namespace quorvane::capture
