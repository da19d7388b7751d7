#include <QQuickItem>

#include "Internal/Views/BarcodeScanner/BarcodeScannerViewController.h"
#include "Internal/Views/InterfaceFile.h"
#include "Internal/Views/ScreenTest.h"

namespace quorvane::capture {
namespace {

class InterfaceFileTest : public ScreenTest {
protected:
    [[nodiscard]] static ItemPointer<QQuickItem> instance(const std::string& name) {
        return InterfaceFile::named(name).value().instantiate();
    }
};

using InterfaceFileDeathTest = InterfaceFileTest;

TEST_F(InterfaceFileTest, AFileThatTheBundleHasNotIsNone) {
    EXPECT_FALSE(InterfaceFile::named("NoSuchScreen").has_value());
}

TEST_F(InterfaceFileTest, EachInstanceIsATreeOfItsOwn) {
    const auto file = InterfaceFile::named("Plain");
    ASSERT_TRUE(file.has_value());
    const auto first = file->instantiate();
    const auto second = file->instantiate();
    EXPECT_NE(first, second);
    EXPECT_EQ(first->size(), QSizeF(100, 50));
}

TEST_F(InterfaceFileTest, ConnectionsAreFoundByNameWhateverTheirKind) {
    const auto items = instance("Plain");
    EXPECT_EQ(connection(*items, "button").width(), 44);
    EXPECT_EQ(connection<QObject>(*items, "constraint").property("constant"), 3);
}

TEST_F(InterfaceFileTest, ATapOnAControlPerformsItsAction) {
    const auto items = instance("Plain");
    items->setParentItem(window->contentItem());
    int taps = 0;
    connectAction(*items, "button", [&] { ++taps; });
    tap(connection(*items, "button"));
    EXPECT_EQ(taps, 1);
    tap(QPoint(90, 40));
    EXPECT_EQ(taps, 1);
}

TEST_F(InterfaceFileDeathTest, AMissingConnectionIsFatal) {
    const auto items = instance("NoConnections");
    EXPECT_DEATH(static_cast<void>(connection(*items, "button")), "must hold each connection");
    EXPECT_DEATH(connectAction(*items, "button", [] {}), "must hold each connection");
}

TEST_F(InterfaceFileDeathTest, AConnectionOfTheWrongKindIsFatal) {
    const auto items = instance("Plain");
    EXPECT_DEATH(static_cast<void>(connection(*items, "constraint")), "must hold each connection");
    items->setObjectName("plain");
    EXPECT_DEATH(connectAction(*items, "plain", [] {}), "must have a signal tapped");
}

TEST_F(InterfaceFileTest, AFileThatHoldsNoItemGivesNone) {
    EXPECT_EQ(instance("NotAnItem"), nullptr);
}

TEST_F(InterfaceFileDeathTest, AFileThatDoesNotCompileIsFatal) {
    EXPECT_DEATH(static_cast<void>(InterfaceFile::named("DoesNotCompile")), "must compile");
}

TEST_F(InterfaceFileDeathTest, AScreensFileThatHoldsNoItemIsFatal) {
    const auto scanner =
        std::make_shared<BarcodeScannerViewController>(InterfaceFile::named("NotAnItem").value(), devices());
    EXPECT_DEATH(scanner->present(*window, false), "must hold an item");
}

} // namespace
} // namespace quorvane::capture
