#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "Cache/CacheAware.h"
#include "Cache/Configs.h"
#include "Cache/QVStorageError.h"
#include "Cache/Transformer.h"
#include "Cache/Utils.h"
#include "Platform/FileManager.h"

namespace quorvane::QVCache {

/// The disk level: one file a key in a directory of its own, named by the MD5 of the whole key and the key's extension.
/// A file's modification date is its entry's expiry. Files outlive the process. One caller at a time.
///
/// Nothing here deletes a file or looks at the clock when reading: an expired entry is still returned, as only the
/// memory level keeps the time. `Key` is a text.
template <class Key, class Value>
class DiskCache : public CacheAware<Key, Value> {
public:
    using TransformerPointer = std::shared_ptr<Transformer<Value>>;

    /// Makes the directory where nothing stands in its place. Throws `std::system_error` when it cannot be made or
    /// protected. @p files outlives the store.
    DiskCache(const DiskConfig& theConfig, platform::FileManager& files, TransformerPointer theTransformer)
        : DiskCache(theConfig, files, pathFor(theConfig, files), std::move(theTransformer)) {
        if (!files.exists(path)) {
            check(files.createDirectory(path));
        }
        if (config.protectionType) {
            check(files.protect(path, *config.protectionType));
        }
    }

    /// Over the directory @p thePath; touches no file.
    DiskCache(DiskConfig theConfig, platform::FileManager& files, std::string thePath,
              TransformerPointer theTransformer)
        : config(std::move(theConfig)),
          fileManager(files),
          path(std::move(thePath)),
          transformer(std::move(theTransformer)) {}

    [[nodiscard]] static std::string makeFileName(const std::string& key) {
        const std::string_view extension = Utils::pathExtension(key);
        return extension.empty() ? Utils::MD5(key) : Utils::MD5(key).append(".").append(extension);
    }

    [[nodiscard]] std::string makeFilePath(const std::string& key) const { return path + "/" + makeFileName(key); }

    /// A file that cannot be written is no failure where an older one stands: that one stays as it is, with its date.
    /// Where none stands, what is thrown is that there is no file to date.
    void add(Value value, const Key& key) override {
        const platform::Date expiry = config.dateProvider() + entryLifetime;
        const std::string data = transformer->to(value);
        const std::string file = makeFilePath(key);
        if (fileManager.replace(file, data, expiry) && !fileManager.exists(file)) {
            check(fileManager.setModificationDate(file, expiry));
        }
    }

    /// Throws the file system's error (no such file, never `NOT_FOUND`), the transformer's, or
    /// `MALFORMED_FILE_ATTRIBUTES`.
    [[nodiscard]] EntryPointer<Key, Value> entry(const Key& key) override {
        const std::string file = makeFilePath(key);
        std::error_code error;
        std::optional<std::string> data = fileManager.read(file, error);
        check(error);
        const std::optional<platform::Date> expiry = fileManager.modificationDate(file, error);
        check(error);
        Value value = transformer->from(std::move(*data));
        if (!expiry) {
            throw QVStorageException(QVStorageError::MALFORMED_FILE_ATTRIBUTES);
        }
        return std::make_shared<Entry<Key, Value>>(key, std::move(value), *expiry, file);
    }

    const DiskConfig config;
    platform::FileManager& fileManager;
    /// Of the store's directory, absolute.
    const std::string path;
    const TransformerPointer transformer;
    /// To be called with the path of a file that the store removed, which this version never does.
    std::function<void(const std::string&)> onRemove;

private:
    static std::string pathFor(const DiskConfig& config, const platform::FileManager& files) {
        std::string base = config.directory ? *config.directory : files.cachesDirectory();
        if (!base.ends_with('/')) {
            base += '/';
        }
        return base + config.name;
    }

    static void check(std::error_code error) {
        if (error) {
            throw std::system_error(error);
        }
    }
};

} // namespace quorvane::QVCache
