#pragma once

#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include <gtest/gtest.h>

#include "Cache/Cache.h"
#include "Platform/FileManager.h"
#include "Platform/Native/NativePlatform.h"
#include "support/ScratchDirectory.h"

namespace quorvane {

/// A test of caches from text to text on real files.
class NativeCacheTest : public ::testing::Test {
protected:
    using Disk = QVCache::DiskCache<std::string, std::string>;
    using Cache = QVCache::Cache<std::string, std::string>;

    ~NativeCacheTest() override { platform::install(nullptr); }

    /// Installs a native platform with its home in the scratch directory.
    void launch() {
        platform::NativeOptions options;
        options.home = home;
        platform::install(platform::NativePlatform::make(std::move(options)));
    }

    [[nodiscard]] static platform::FileManager& files() { return platform::current().files(); }
    [[nodiscard]] static auto transformer() { return QVCache::TransformerFactory::forCodable<std::string>(); }

    [[nodiscard]] static QVCache::DiskConfig config() {
        QVCache::DiskConfig result;
        result.name = "notes.cache";
        return result;
    }

    [[nodiscard]] static std::shared_ptr<Disk> makeDisk() {
        return std::make_shared<Disk>(config(), files(), transformer());
    }
    [[nodiscard]] static std::shared_ptr<Cache> makeCache() {
        return std::make_shared<Cache>(config(), QVCache::MemoryConfig(), transformer());
    }

    [[nodiscard]] static std::vector<std::string> listed(const std::string& path) {
        std::error_code error;
        return files().list(path, error).value_or(std::vector<std::string>());
    }

    /// What @p operation throws, in words; empty for none.
    template <class Operation>
    [[nodiscard]] static std::string failureOf(Operation operation) {
        try {
            operation();
            return "";
        } catch (const std::exception& error) {
            return error.what();
        }
    }

    const quorvane::testing::ScratchDirectory scratch;
    const std::string home = scratch.path() + "/home";
    const std::string directory = home + "/caches/notes.cache";
};

} // namespace quorvane
