#pragma once

#include <QQuickItem>
#include <memory>

namespace quorvane::capture {

/// Takes an item from the scene at once and destroys it once no event is under way: it may be inside a handler of its
/// own.
struct RemoveItem {
    void operator()(QQuickItem* item) const {
        item->setParentItem(nullptr);
        item->deleteLater();
    }
};

template <class T>
using ItemPointer = std::unique_ptr<T, RemoveItem>;

} // namespace quorvane::capture
