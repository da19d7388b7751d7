#pragma once

#include <QAnimationDriver>

namespace quorvane::capture {

/// Animations stand still until a test lets time pass for them.
class AnimationClock final : public QAnimationDriver {
public:
    AnimationClock();
    ~AnimationClock() override;

    void pass(int milliseconds);

    [[nodiscard]] qint64 elapsed() const override { return now - startedAt; }

protected:
    void start() override;

private:
    qint64 now = 0;
    qint64 startedAt = 0;
};

} // namespace quorvane::capture
