#pragma once

#include <QObject>
#include <functional>
#include <utility>

namespace quorvane::capture {

/// Lets a signal that only its name is known of call a function.
class Action : public QObject {
    Q_OBJECT

public:
    explicit Action(std::function<void()> theFunction) : function(std::move(theFunction)) {}

    Q_SLOT void perform() { function(); }

private:
    const std::function<void()> function;
};

} // namespace quorvane::capture
