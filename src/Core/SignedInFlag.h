#pragma once

#include <cstddef>

#include "Platform/Platform.h"

namespace quorvane {

/// The one entry that says both "signed in" and "tracking is on" ("quorvane_background_tracking"). All writes of the
/// entry pass here, so that a token refresh, which must show the library as not signed in while it lasts, neither ends
/// nor begins tracking. Main thread only.
class SignedInFlag {
public:
    explicit SignedInFlag(platform::Platform& platform);
    SignedInFlag(const SignedInFlag&) = delete;
    SignedInFlag& operator=(const SignedInFlag&) = delete;
    /// Refreshes that are still under way when the platform is taken out of use end here: no answer will come.
    ~SignedInFlag();

    [[nodiscard]] static SignedInFlag& shared();

    /// False when nothing is stored.
    [[nodiscard]] bool isSet() const;

    /// Whether tracking is on: what the entry says, or during a refresh what it will say after it.
    [[nodiscard]] bool isTracking() const;

    /// Writes the entry. During a refresh this is also what the entry will be after it.
    void set(bool value);

    /// Writes false until the matching `endRefresh`. Refreshes may overlap.
    void beginRefresh();

    /// After the last of overlapping refreshes the entry is again what it was before the first of them, or what was
    /// set meanwhile; an entry that was written or removed past this class stays as it is. A process that is killed in
    /// between leaves false.
    void endRefresh();

    /// Whether a refresh is under way.
    [[nodiscard]] bool isRefreshing() const { return refreshes > 0; }

private:
    void write(bool value);
    [[nodiscard]] bool isAsRefreshLeftIt() const;

    platform::Platform& platform;
    std::size_t refreshes = 0;
    bool afterRefresh = false;
};

} // namespace quorvane
