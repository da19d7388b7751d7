#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <iostream>

#include <Internal/Views/Capture.h>
#include <Internal/Views/Devices/FileCameras.h>
#include <Platform/Qt/QtPlatform.h>

#include "Host.h"

// capture [FILE]: both camera screens, with the device's camera or with a picture or video in its place.
int main(int argc, char** argv) {
    const QGuiApplication application(argc, argv);
    quorvane::platform::install(quorvane::platform::QtPlatform::make());
    quorvane::capture::Devices devices;
    if (argc > 1) {
        const auto opened = quorvane::capture::FileCameras::open(argv[1]);
        if (const auto* error = std::get_if<quorvane::platform::ImageError>(&opened)) {
            std::cerr << error->message << "\n";
            return 1;
        }
        devices.cameras = std::get<0>(opened);
    }
    quorvane::capture::install(devices);

    const auto host = std::make_shared<Host>();
    QQmlApplicationEngine engine;
    engine.setInitialProperties({{"host", QVariant::fromValue<QObject*>(host.get())}});
    engine.load(QUrl("qrc:/Main.qml"));
    if (engine.rootObjects().isEmpty()) {
        return 1;
    }
    host->setWindow(qobject_cast<QQuickWindow*>(engine.rootObjects().constFirst()));
    return QGuiApplication::exec();
}
