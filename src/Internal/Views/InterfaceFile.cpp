#include "Internal/Views/InterfaceFile.h"

#include <QDebug>
#include <QFile>
#include <QQmlComponent>
#include <QQmlEngine>
#include <utility>

#include "Internal/Views/Action.h"
#include "Platform/Precondition.h"
#include "Platform/Registry.h"

/// A static library's bundle is found only once it was asked for, which must stand outside of any namespace.
static void findBundle() {
    Q_INIT_RESOURCE(capture);
}

namespace quorvane::capture {
namespace {

/// One engine for all screens: what it has compiled serves the next screen of that kind.
struct Interfaces {
    Interfaces() { findBundle(); }

    const std::shared_ptr<QQmlEngine> engine = std::make_shared<QQmlEngine>();
};

} // namespace

InterfaceFile::InterfaceFile(std::shared_ptr<QQmlEngine> theEngine, std::shared_ptr<QQmlComponent> theComponent)
    : engine(std::move(theEngine)), component(std::move(theComponent)) {}

std::optional<InterfaceFile> InterfaceFile::named(const std::string& name) {
    std::shared_ptr<QQmlEngine> engine = platform::shared<Interfaces>().engine;
    const QString path = QString::fromStdString(bundlePath(name + ".qml"));
    if (!QFile::exists(path)) {
        return std::nullopt;
    }
    auto component = std::make_shared<QQmlComponent>(engine.get(), QUrl("qrc" + path));
    if (!component->isReady()) {
        qCritical().noquote() << component->errorString();
    }
    QV_PRECONDITION(component->isReady(), "an interface file must compile");
    return InterfaceFile(std::move(engine), std::move(component));
}

ItemPointer<QQuickItem> InterfaceFile::instantiate() const {
    std::unique_ptr<QObject> root(component->create());
    if (qobject_cast<QQuickItem*>(root.get()) == nullptr) {
        return nullptr;
    }
    QQmlEngine::setObjectOwnership(root.get(), QQmlEngine::CppOwnership);
    return ItemPointer<QQuickItem>(static_cast<QQuickItem*>(root.release()));
}

QObject& connectionNamed(QQuickItem& root, const char* name, const QMetaObject& kind) {
    QObject* const found = root.objectName() == name ? &root : root.findChild<QObject*>(name);
    const bool fits = found != nullptr && found->metaObject()->inherits(&kind);
    if (!fits) {
        qCritical() << "An interface file has no connection of this name and kind:" << name << kind.className();
    }
    QV_PRECONDITION(fits, "an interface file must hold each connection of its class");
    return *found;
}

void connectAction(QQuickItem& root, const char* name, std::function<void()> action) {
    QObject& control = connectionNamed(root, name, QQuickItem::staticMetaObject);
    auto receiver = std::make_unique<Action>(std::move(action));
    const bool isConnected = QObject::connect(&control, SIGNAL(tapped()), receiver.get(), SLOT(perform()));
    QV_PRECONDITION(isConnected, "a control of an interface file must have a signal tapped()");
    // It goes with the control.
    receiver.release()->setParent(&control);
}

std::string bundlePath(const std::string& fileName) {
    static_cast<void>(platform::shared<Interfaces>());
    return ":/quorvane/capture/" + fileName;
}

} // namespace quorvane::capture
