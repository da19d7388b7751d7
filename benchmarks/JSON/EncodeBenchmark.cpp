#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>
#include <boost/json.hpp>
#include <nlohmann/json.hpp>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "JSON/JSON.h"
#include "benchmarks/JSON/Measure.h"
#include "benchmarks/JSON/TableMapping.h"

#ifdef QUORVANE_BENCHMARK_QT
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#endif

namespace quorvane {

namespace {

struct RapidSink {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer{buffer};

    void beginObject() { writer.StartObject(); }
    void endObject() { writer.EndObject(); }
    void beginList() { writer.StartArray(); }
    void endList() { writer.EndArray(); }
    void key(std::string_view name) { writer.Key(name.data(), static_cast<rapidjson::SizeType>(name.size())); }
    void text(std::string_view value) { writer.String(value.data(), static_cast<rapidjson::SizeType>(value.size())); }
    void integer(std::int64_t value) { writer.Int64(value); }
    void number(double value) { writer.Double(value); }
    void boolean(bool value) { writer.Bool(value); }
};

/// Builds a library's document from the calls. `Library` says what its values are.
template <class Library>
class DocumentSink {
public:
    using Value = typename Library::Value;

    void beginObject() { open.push_back({Library::object(), {}}); }
    void beginList() { open.push_back({Library::list(), {}}); }
    void endObject() { close(); }
    void endList() { close(); }
    void key(std::string_view name) { open.back().key = name; }
    void text(std::string_view value) { add(Library::text(value)); }
    void integer(std::int64_t value) { add(Value(value)); }
    void number(double value) { add(Value(value)); }
    void boolean(bool value) { add(Value(value)); }

    Value root;

private:
    struct Level {
        Value value;
        std::string_view key;
    };

    void close() {
        Value finished = std::move(open.back().value);
        open.pop_back();
        add(std::move(finished));
    }
    void add(Value value) {
        if (open.empty()) {
            root = std::move(value);
        } else if (open.back().key.empty()) {
            Library::append(open.back().value, std::move(value));
        } else {
            Library::insert(open.back().value, open.back().key, std::move(value));
        }
    }

    std::vector<Level> open;
};

struct BoostLibrary {
    using Value = boost::json::value;
    static Value object() { return boost::json::object(); }
    static Value list() { return boost::json::array(); }
    static Value text(std::string_view value) { return boost::json::string_view(value.data(), value.size()); }
    static void append(Value& list, Value value) { list.get_array().push_back(std::move(value)); }
    static void insert(Value& object, std::string_view key, Value value) {
        object.get_object().emplace({key.data(), key.size()}, std::move(value));
    }
};

struct NlohmannLibrary {
    using Value = nlohmann::json;
    static Value object() { return Value::object(); }
    static Value list() { return Value::array(); }
    static Value text(std::string_view value) { return Value(value); }
    static void append(Value& list, Value value) { list.push_back(std::move(value)); }
    static void insert(Value& object, std::string_view key, Value value) {
        object.emplace(std::string(key), std::move(value));
    }
};

template <class Operation>
void measureEncoding(benchmark::State& state, Operation encode) {
    const auto list = json::decode<TaskList>(textFor(state));
    measure(state, [&] { encode(list); });
}

void rapidEncode(benchmark::State& state) {
    measureEncoding(state, [](const TaskList& list) {
        RapidSink sink;
        mapping::ToSink<RapidSink>::write(list, sink);
        benchmark::DoNotOptimize(std::string(sink.buffer.GetString(), sink.buffer.GetSize()));
    });
}

void ourEncode(benchmark::State& state) {
    measureEncoding(state, [](const TaskList& list) { benchmark::DoNotOptimize(json::encode(list)); });
}

void boostEncode(benchmark::State& state) {
    measureEncoding(state, [](const TaskList& list) {
        DocumentSink<BoostLibrary> sink;
        mapping::ToSink<DocumentSink<BoostLibrary>>::write(list, sink);
        benchmark::DoNotOptimize(boost::json::serialize(sink.root));
    });
}

void nlohmannEncode(benchmark::State& state) {
    measureEncoding(state, [](const TaskList& list) {
        DocumentSink<NlohmannLibrary> sink;
        mapping::ToSink<DocumentSink<NlohmannLibrary>>::write(list, sink);
        benchmark::DoNotOptimize(sink.root.dump());
    });
}

#ifdef QUORVANE_BENCHMARK_QT

QLatin1StringView latin(std::string_view text) {
    return {text.data(), static_cast<qsizetype>(text.size())};
}

/// Qt's values are copied when they are taken out to be changed, so its document is built bottom-up.
struct QtLibrary {
    struct Value {
        QJsonObject members;
        QJsonArray items;
        QJsonValue scalar;
        enum class Kind { object, list, scalar } kind = Kind::scalar;

        Value() = default;
        explicit Value(Kind theKind) : kind(theKind) {}
        explicit Value(std::int64_t value) : scalar(static_cast<qint64>(value)) {}
        explicit Value(double value) : scalar(value) {}
        explicit Value(bool value) : scalar(value) {}
        explicit Value(const QString& value) : scalar(value) {}
        QJsonValue value() const {
            return kind == Kind::object ? QJsonValue(members) : kind == Kind::list ? QJsonValue(items) : scalar;
        }
    };
    static Value object() { return Value(Value::Kind::object); }
    static Value list() { return Value(Value::Kind::list); }
    static Value text(std::string_view text) {
        return Value(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
    }
    static void append(Value& list, const Value& value) { list.items.append(value.value()); }
    static void insert(Value& object, std::string_view key, const Value& value) {
        object.members.insert(latin(key), value.value());
    }
};

void qtEncode(benchmark::State& state) {
    measureEncoding(state, [](const TaskList& list) {
        DocumentSink<QtLibrary> sink;
        mapping::ToSink<DocumentSink<QtLibrary>>::write(list, sink);
        benchmark::DoNotOptimize(QJsonDocument(sink.root.members).toJson(QJsonDocument::Compact));
    });
}

#endif

const bool registered = [] {
    Registration registration("encode");
    registration.add("RapidJSON", rapidEncode);
    registration.add("ours", ourEncode);
    registration.add("Boost.JSON", boostEncode);
    registration.add("nlohmann", nlohmannEncode);
#ifdef QUORVANE_BENCHMARK_QT
    registration.add("Qt", qtEncode);
#endif
    registration.finish();
    return true;
}();

} // namespace

} // namespace quorvane
