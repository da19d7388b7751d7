#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include "Cache/Cache.h"
#include "support/SimulatedTest.h"

namespace quorvane {

/// A test of caches from text to text on the simulated platform: the clock stands until the test moves it.
class CacheTest : public SimulatedTest {
protected:
    using Memory = QVCache::MemoryCache<std::string, std::string>;
    using Disk = QVCache::DiskCache<std::string, std::string>;
    using Hybrid = QVCache::HybridCache<std::string, std::string>;
    using Cache = QVCache::Cache<std::string, std::string>;
    using Change = QVCache::CacheChange<std::string>;
    using KeyChange = QVCache::KeyChange<std::string>;

    static constexpr std::chrono::hours lifetime{12};

    [[nodiscard]] static auto transformer() { return QVCache::TransformerFactory::forCodable<std::string>(); }

    [[nodiscard]] static QVCache::DiskConfig diskConfig() {
        QVCache::DiskConfig config;
        config.name = "notes.cache";
        return config;
    }

    [[nodiscard]] quorvane::testing::MemoryFileManager& files() { return phone->files(); }
    [[nodiscard]] platform::Date time() { return phone->clock().now(); }

    [[nodiscard]] std::shared_ptr<Memory> makeMemory() { return std::make_shared<Memory>(QVCache::MemoryConfig()); }
    [[nodiscard]] std::shared_ptr<Disk> makeDisk() {
        return std::make_shared<Disk>(diskConfig(), files(), transformer());
    }

    /// Content of the file at @p path; empty when there is none.
    [[nodiscard]] std::string fileAt(const std::string& path) {
        std::error_code error;
        return files().read(path, error).value_or("");
    }

    [[nodiscard]] std::vector<std::string> listed(const std::string& path) {
        std::error_code error;
        return files().list(path, error).value_or(std::vector<std::string>{"(cannot be listed)"});
    }

    /// What @p operation throws, in words: "NOT_FOUND", an error code's message, a decoder's sentence; empty for none.
    template <class Operation>
    [[nodiscard]] static std::string failureOf(Operation operation) {
        try {
            operation();
            return "";
        } catch (const std::exception& error) {
            return error.what();
        }
    }

    static constexpr const char* noSuchFile = "No such file or directory";
    const std::string directory = "/simulated/caches/notes.cache";
};

} // namespace quorvane
