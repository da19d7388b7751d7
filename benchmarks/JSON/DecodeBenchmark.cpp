#include <string>
#include <string_view>

#include <benchmark/benchmark.h>
#include <boost/json.hpp>
#include <nlohmann/json.hpp>
#include <rapidjson/document.h>
#include <simdjson.h>

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
    const simdjson::padded_string text(textFor(state));
    simdjson::dom::parser parser;
    measure(state, [&] { benchmark::DoNotOptimize(parser.parse(text).value()); });
    state.counters["bytes"] = static_cast<double>(text.size());
}

void deepCopyAlone(benchmark::State& state) {
    const auto list = json::decode<TaskList>(textFor(state));
    measure(state, [&] {
        TaskList copy;
        mapping::copyInto(copy, list);
        benchmark::DoNotOptimize(copy);
    });
}

/// The body of an answer comes with the spare capacity that the parser wants.
void ourDecode(benchmark::State& state) {
    std::string text = textFor(state);
    text.reserve(text.size() + simdjson::SIMDJSON_PADDING);
    measure(state, [&] {
        auto document = json::Document::parse(std::move(text));
        TaskList list;
        json::decode(document, list);
        benchmark::DoNotOptimize(list);
        text = std::move(document).takeText();
    });
}

void rapidDecode(benchmark::State& state) {
    const std::string& text = textFor(state);
    measure(state, [&] {
        rapidjson::Document document;
        document.Parse(text.data(), text.size());
        TaskList list;
        mapping::FromDocument<RapidSource>::readModel(&document, list);
        benchmark::DoNotOptimize(list);
    });
}

void boostDecode(benchmark::State& state) {
    const std::string& text = textFor(state);
    measure(state, [&] {
        const auto document = boost::json::parse({text.data(), text.size()});
        TaskList list;
        mapping::FromDocument<BoostSource>::readModel(&document, list);
        benchmark::DoNotOptimize(list);
    });
}

void nlohmannDecode(benchmark::State& state) {
    const std::string& text = textFor(state);
    measure(state, [&] {
        const auto document = nlohmann::json::parse(text);
        TaskList list;
        mapping::FromDocument<NlohmannSource>::readModel(&document, list);
        benchmark::DoNotOptimize(list);
    });
}

#ifdef QUORVANE_BENCHMARK_QT

struct QtSource {
    using Value = QJsonValue;
    static Value find(const Value& object, std::string_view key) {
        return object[QLatin1StringView(key.data(), static_cast<qsizetype>(key.size()))];
    }
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

void qtDecode(benchmark::State& state) {
    const std::string& text = textFor(state);
    measure(state, [&] {
        const auto document =
            QJsonDocument::fromJson(QByteArray::fromRawData(text.data(), static_cast<qsizetype>(text.size())));
        TaskList list;
        mapping::FromDocument<QtSource>::readModel(document.object(), list);
        benchmark::DoNotOptimize(list);
    });
}

#endif

const bool registered = [] {
    Registration registration("decode");
    registration.add("simdjson, parse alone", simdjsonParseAlone);
    registration.add("deep copy of the structs alone", deepCopyAlone);
    registration.add("ours", ourDecode);
    registration.add("RapidJSON", rapidDecode);
    registration.add("Boost.JSON", boostDecode);
    registration.add("nlohmann", nlohmannDecode);
#ifdef QUORVANE_BENCHMARK_QT
    registration.add("Qt", qtDecode);
#endif
    registration.finish();
    return true;
}();

} // namespace

} // namespace quorvane
