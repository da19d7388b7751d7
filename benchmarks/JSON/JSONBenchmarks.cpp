#include <map>
#include <string>
#include <string_view>

#include <benchmark/benchmark.h>
#include <boost/json.hpp>
#include <nlohmann/json.hpp>
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include <simdjson.h>

#include "JSON/JSON.h"
#include "benchmarks/JSON/TableMapping.h"
#include "benchmarks/JSON/TaskList.h"
#include "benchmarks/support/Allocations.h"

#ifdef QUORVANE_BENCHMARK_QT
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#endif

namespace quorvane {

namespace {

const std::string& textOf(int count) {
    static std::map<int, std::string> texts;
    std::string& text = texts[count];
    if (text.empty()) {
        text = taskListText(count);
    }
    return text;
}

/// Runs @p operation, with the number of its allocations and the size of the text beside it.
template <class Operation>
void measure(benchmark::State& state, Operation operation) {
    operation();
    const std::uint64_t before = allocationCount();
    operation();
    state.counters["allocations"] = static_cast<double>(allocationCount() - before);
    for (auto _ : state) {
        operation();
    }
}

int tasks(const benchmark::State& state) {
    return static_cast<int>(state.range(0));
}

// Decoding ------------------------------------------------------------------------------------------------------------

struct RapidSource {
    using Value = const rapidjson::Value*;
    static Value find(Value object, std::string_view key) {
        const auto found = object->FindMember(
            rapidjson::Value(rapidjson::StringRef(key.data(), static_cast<rapidjson::SizeType>(key.size()))));
        return found == object->MemberEnd() ? nullptr : &found->value;
    }
    static bool isThere(Value value) { return value != nullptr && !value->IsNull(); }
    static bool boolean(Value value) { return value->GetBool(); }
    static std::int64_t integer(Value value) { return value->GetInt64(); }
    static double number(Value value) { return value->GetDouble(); }
    static void text(Value value, std::string& field) { field.assign(value->GetString(), value->GetStringLength()); }
    static std::size_t size(Value value) { return value->Size(); }
    template <class Visitor>
    static void forEach(Value value, Visitor visit) {
        for (const auto& item : value->GetArray()) {
            visit(&item);
        }
    }
};

struct BoostSource {
    using Value = const boost::json::value*;
    static Value find(Value object, std::string_view key) {
        return object->get_object().if_contains({key.data(), key.size()});
    }
    static bool isThere(Value value) { return value != nullptr && !value->is_null(); }
    static bool boolean(Value value) { return value->get_bool(); }
    static std::int64_t integer(Value value) { return value->get_int64(); }
    static double number(Value value) { return value->to_number<double>(); }
    static void text(Value value, std::string& field) {
        field.assign(value->get_string().data(), value->get_string().size());
    }
    static std::size_t size(Value value) { return value->get_array().size(); }
    template <class Visitor>
    static void forEach(Value value, Visitor visit) {
        for (const auto& item : value->get_array()) {
            visit(&item);
        }
    }
};

struct NlohmannSource {
    using Value = const nlohmann::json*;
    static Value find(Value object, std::string_view key) {
        const auto found = object->find(key);
        return found == object->end() ? nullptr : &*found;
    }
    static bool isThere(Value value) { return value != nullptr && !value->is_null(); }
    static bool boolean(Value value) { return value->get<bool>(); }
    static std::int64_t integer(Value value) { return value->get<std::int64_t>(); }
    static double number(Value value) { return value->get<double>(); }
    static void text(Value value, std::string& field) { field = value->get_ref<const std::string&>(); }
    static std::size_t size(Value value) { return value->size(); }
    template <class Visitor>
    static void forEach(Value value, Visitor visit) {
        for (const auto& item : *value) {
            visit(&item);
        }
    }
};

void simdjsonParseAlone(benchmark::State& state) {
    const simdjson::padded_string text(textOf(tasks(state)));
    simdjson::dom::parser parser;
    measure(state, [&] { benchmark::DoNotOptimize(parser.parse(text).value()); });
    state.counters["bytes"] = static_cast<double>(text.size());
}

void deepCopyAlone(benchmark::State& state) {
    const auto list = json::decode<TaskList>(textOf(tasks(state)));
    measure(state, [&] {
        TaskList copy;
        mapping::copyInto(copy, list);
        benchmark::DoNotOptimize(copy);
    });
}

/// The body of an answer comes with the spare capacity that the parser wants.
void ourDecode(benchmark::State& state) {
    std::string text = textOf(tasks(state));
    text.reserve(text.size() + simdjson::SIMDJSON_PADDING);
    measure(state, [&] {
        const auto document = json::Document::parse(std::move(text));
        TaskList list;
        json::decode(document, list);
        benchmark::DoNotOptimize(list);
    });
}

void rapidDecode(benchmark::State& state) {
    const std::string& text = textOf(tasks(state));
    measure(state, [&] {
        rapidjson::Document document;
        document.Parse(text.data(), text.size());
        TaskList list;
        mapping::FromDocument<RapidSource>::readModel(&document, list);
        benchmark::DoNotOptimize(list);
    });
}

void boostDecode(benchmark::State& state) {
    const std::string& text = textOf(tasks(state));
    measure(state, [&] {
        const auto document = boost::json::parse({text.data(), text.size()});
        TaskList list;
        mapping::FromDocument<BoostSource>::readModel(&document, list);
        benchmark::DoNotOptimize(list);
    });
}

void nlohmannDecode(benchmark::State& state) {
    const std::string& text = textOf(tasks(state));
    measure(state, [&] {
        const auto document = nlohmann::json::parse(text);
        TaskList list;
        mapping::FromDocument<NlohmannSource>::readModel(&document, list);
        benchmark::DoNotOptimize(list);
    });
}

// Encoding ------------------------------------------------------------------------------------------------------------

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
    const auto list = json::decode<TaskList>(textOf(tasks(state)));
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

// Qt ------------------------------------------------------------------------------------------------------------------

#ifdef QUORVANE_BENCHMARK_QT

QLatin1StringView latin(std::string_view text) {
    return {text.data(), static_cast<qsizetype>(text.size())};
}

struct QtSource {
    using Value = QJsonValue;
    static Value find(const Value& object, std::string_view key) { return object[latin(key)]; }
    static bool isThere(const Value& value) { return !value.isUndefined() && !value.isNull(); }
    static bool boolean(const Value& value) { return value.toBool(); }
    static std::int64_t integer(const Value& value) { return value.toInteger(); }
    static double number(const Value& value) { return value.toDouble(); }
    static void text(const Value& value, std::string& field) { field = value.toString().toStdString(); }
    static std::size_t size(const Value& value) { return static_cast<std::size_t>(value.toArray().size()); }
    template <class Visitor>
    static void forEach(const Value& value, Visitor visit) {
        for (const auto item : value.toArray()) {
            visit(item);
        }
    }
};

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

void qtDecode(benchmark::State& state) {
    const std::string& text = textOf(tasks(state));
    measure(state, [&] {
        const auto document =
            QJsonDocument::fromJson(QByteArray::fromRawData(text.data(), static_cast<qsizetype>(text.size())));
        TaskList list;
        mapping::FromDocument<QtSource>::readModel(document.object(), list);
        benchmark::DoNotOptimize(list);
    });
}

void qtEncode(benchmark::State& state) {
    measureEncoding(state, [](const TaskList& list) {
        DocumentSink<QtLibrary> sink;
        mapping::ToSink<DocumentSink<QtLibrary>>::write(list, sink);
        benchmark::DoNotOptimize(QJsonDocument(sink.root.members).toJson(QJsonDocument::Compact));
    });
}

#endif

const bool registered = [] {
    for (const int count : {1, 50, 1000}) {
        const auto add = [count](const char* group, const char* name, auto* function) {
            const std::string full = std::string(group) + " a list of " + std::to_string(count) + " tasks/" + name;
            benchmark::RegisterBenchmark(full.c_str(), function)->Arg(count);
        };
        add("decode", "simdjson, parse alone", simdjsonParseAlone);
        add("decode", "deep copy of the structs alone", deepCopyAlone);
        add("decode", "ours", ourDecode);
        add("decode", "RapidJSON", rapidDecode);
        add("decode", "Boost.JSON", boostDecode);
        add("decode", "nlohmann", nlohmannDecode);
#ifdef QUORVANE_BENCHMARK_QT
        add("decode", "Qt", qtDecode);
#endif
        add("encode", "RapidJSON", rapidEncode);
        add("encode", "ours", ourEncode);
        add("encode", "Boost.JSON", boostEncode);
        add("encode", "nlohmann", nlohmannEncode);
#ifdef QUORVANE_BENCHMARK_QT
        add("encode", "Qt", qtEncode);
#endif
    }
    return true;
}();

} // namespace

} // namespace quorvane
