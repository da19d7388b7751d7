#include <cstdio>

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Platform/FileManager.h"
#include "benchmarks/Cache/Databases.h"
#include "benchmarks/Cache/InstalledNative.h"
#include "benchmarks/Cache/Places.h"

namespace quorvane {

namespace {

/// The files of all places by hand, in a directory of their own.
class PlainFiles {
public:
    PlainFiles() {
        for (const PlacePointer& place : places()) {
            paths.push_back(scratch.path() + "/" + place->_id);
            contents.push_back(contentOf(place));
            replace(paths.size() - 1);
        }
    }

    void replace(std::size_t number) {
        const std::string staged = scratch.path() + "/staged";
        const int file = open(staged.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, S_IRUSR | S_IWUSR);
        const std::string& content = contents[number];
        if (write(file, content.data(), content.size()) != static_cast<ssize_t>(content.size()) || close(file) != 0 ||
            std::rename(staged.c_str(), paths[number].c_str()) != 0) {
            std::abort();
        }
    }

    [[nodiscard]] std::string read(std::size_t number) const {
        const int file = open(paths[number].c_str(), O_RDONLY | O_CLOEXEC);
        struct stat status {};
        if (fstat(file, &status) != 0) {
            std::abort();
        }
        std::string content(static_cast<std::size_t>(status.st_size), '\0');
        if (::read(file, content.data(), content.size()) != status.st_size || close(file) != 0) {
            std::abort();
        }
        return content;
    }

    testing::ScratchDirectory scratch;
    std::vector<std::string> paths;
    std::vector<std::string> contents;
};

/// Runs @p operation for one place after the other. The time on the wall counts: a write may wait for the disk.
template <class Operation>
void forPlaces(benchmark::State& state, Operation operation) {
    std::size_t next = 0;
    for (auto _ : state) {
        operation(next++ % placeCount);
    }
}

void plainReplace(benchmark::State& state) {
    PlainFiles files;
    forPlaces(state, [&](std::size_t number) { files.replace(number); });
}
BENCHMARK(plainReplace)->Name("replace a value on disk/temporary file and rename")->UseRealTime();

void ourReplace(benchmark::State& state) {
    const InstalledNative native;
    PlainFiles files;
    const platform::Date date = platform::current().clock().now();
    forPlaces(state, [&](std::size_t number) {
        if (platform::current().files().replace(files.paths[number], files.contents[number], date)) {
            state.SkipWithError("not written");
        }
    });
}
BENCHMARK(ourReplace)->Name("replace a value on disk/ours, the file alone")->UseRealTime();

void ourAdd(benchmark::State& state) {
    const InstalledNative native;
    const auto cache = makePlaceCache();
    auto& disk = *cache->hybridCache->disk;
    for (const PlacePointer& place : places()) {
        disk.add(place, place->_id);
    }
    forPlaces(state, [&](std::size_t number) { disk.add(places()[number], places()[number]->_id); });
}
BENCHMARK(ourAdd)->Name("replace a value on disk/ours, DiskCache with JSON")->UseRealTime();

template <std::unique_ptr<KeyValueStore> (*open)(const std::string&)>
void storePut(benchmark::State& state) {
    const testing::ScratchDirectory scratch;
    const auto store = open(scratch.path());
    std::vector<std::string> contents;
    for (const PlacePointer& place : places()) {
        contents.push_back(contentOf(place));
        store->put(place->_id, contents.back());
    }
    forPlaces(state, [&](std::size_t number) { store->put(places()[number]->_id, contents[number]); });
}
BENCHMARK(storePut<&openSQLite>)->Name("replace a value on disk/SQLite")->UseRealTime();
BENCHMARK(storePut<&openLevelDB>)->Name("replace a value on disk/LevelDB")->UseRealTime();

void plainRead(benchmark::State& state) {
    const PlainFiles files;
    forPlaces(state, [&](std::size_t number) { benchmark::DoNotOptimize(files.read(number)); });
}
BENCHMARK(plainRead)->Name("read a value from disk/open, read and close")->UseRealTime();

void ourRead(benchmark::State& state) {
    const InstalledNative native;
    const PlainFiles files;
    forPlaces(state, [&](std::size_t number) {
        std::error_code error;
        benchmark::DoNotOptimize(platform::current().files().read(files.paths[number], error));
    });
}
BENCHMARK(ourRead)->Name("read a value from disk/ours, the file alone")->UseRealTime();

void ourEntry(benchmark::State& state) {
    const InstalledNative native;
    const auto cache = makePlaceCache();
    auto& disk = *cache->hybridCache->disk;
    for (const PlacePointer& place : places()) {
        disk.add(place, place->_id);
    }
    forPlaces(state, [&](std::size_t number) { benchmark::DoNotOptimize(disk.entry(places()[number]->_id)); });
}
BENCHMARK(ourEntry)->Name("read a value from disk/ours, DiskCache with JSON")->UseRealTime();

template <std::unique_ptr<KeyValueStore> (*open)(const std::string&)>
void storeGet(benchmark::State& state) {
    const testing::ScratchDirectory scratch;
    const auto store = open(scratch.path());
    for (const PlacePointer& place : places()) {
        store->put(place->_id, contentOf(place));
    }
    forPlaces(state, [&](std::size_t number) { benchmark::DoNotOptimize(store->get(places()[number]->_id)); });
}
BENCHMARK(storeGet<&openSQLite>)->Name("read a value from disk/SQLite")->UseRealTime();
BENCHMARK(storeGet<&openLevelDB>)->Name("read a value from disk/LevelDB")->UseRealTime();

} // namespace

} // namespace quorvane
