#include <QGuiApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    // No display is needed, and the toolkit's own media backend that needs no further plugins.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    qputenv("QT_MEDIA_BACKEND", "ffmpeg");
    ::testing::InitGoogleTest(&argc, argv);
    ::testing::GTEST_FLAG(death_test_style) = "threadsafe";
    const QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
