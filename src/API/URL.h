#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quorvane {

/// Percent-encodes everything but letters, digits and "-._~" (RFC 3986, unreserved), UTF-8 byte by byte.
[[nodiscard]] std::string percentEncoded(std::string_view text);

/// A value as one component of a path: "/", "?" and the components "." and ".." do not leave it.
[[nodiscard]] std::string pathComponent(std::string_view value);

/// An absolute URL of a service: scheme "http" or "https", a host, an optional port and path.
class URL {
public:
    /// None when @p text is no such URL.
    [[nodiscard]] static std::optional<URL> parse(std::string_view text);

    /// The URL with @p path, which is already encoded, behind its own. Exactly one slash stands between them.
    [[nodiscard]] URL appending(std::string_view path) const;

    /// The URL with @p items as its query, in their order, names and values encoded. No items: no "?".
    [[nodiscard]] URL withQuery(const std::vector<std::pair<std::string, std::string>>& items) const;

    [[nodiscard]] const std::string& text() const { return absolute; }

private:
    explicit URL(std::string text) : absolute(std::move(text)) {}
    std::string absolute;
};

} // namespace quorvane
