#include <string>
#include <utility>

#include <benchmark/benchmark.h>
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include <simdjson.h>

#include "JSON/JSON.h"
#include "Tasks/QVTask.h"
#include "benchmarks/JSON/Measure.h"

namespace quorvane {

namespace {

/// A task with fifty questions, as a service would send it.
const std::string& taskText() {
    static const std::string text = [] {
        constexpr std::size_t questionCount = 50;
        const auto list = json::decode<TaskList>(taskListText(10));
        QVTask task = *list.data.front();
        for (std::size_t i = 1; task.questions.size() < questionCount; ++i) {
            const auto& more = list.data.at(i)->questions;
            task.questions.insert(task.questions.end(), more.begin(), more.end());
        }
        task.questions.resize(questionCount);
        return json::encode(task);
    }();
    return text;
}

void simdjsonParse(benchmark::State& state) {
    const simdjson::padded_string text(taskText());
    simdjson::dom::parser parser;
    measure(state, [&] { benchmark::DoNotOptimize(parser.parse(text).value()); });
    state.counters["bytes"] = static_cast<double>(text.size());
}
BENCHMARK(simdjsonParse)->Name("decode a task with 50 questions/simdjson, parse alone");

void rapidParse(benchmark::State& state) {
    measure(state, [&] {
        rapidjson::Document document;
        document.Parse(taskText().data(), taskText().size());
        benchmark::DoNotOptimize(document);
    });
}
BENCHMARK(rapidParse)->Name("decode a task with 50 questions/RapidJSON, parse alone");

void ourDecode(benchmark::State& state) {
    std::string text = taskText();
    text.reserve(text.size() + simdjson::SIMDJSON_PADDING);
    measure(state, [&] {
        auto document = json::Document::parse(std::move(text));
        QVTask task;
        json::decode(document, task);
        benchmark::DoNotOptimize(task);
        text = std::move(document).takeText();
    });
}
BENCHMARK(ourDecode)->Name("decode a task with 50 questions/ours, into the models");

void rapidWrite(benchmark::State& state) {
    rapidjson::Document document;
    document.Parse(taskText().data(), taskText().size());
    measure(state, [&] {
        rapidjson::StringBuffer buffer;
        rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
        document.Accept(writer);
        benchmark::DoNotOptimize(std::string(buffer.GetString(), buffer.GetSize()));
    });
}
BENCHMARK(rapidWrite)->Name("encode a task with 50 questions/RapidJSON, of its own document");

void ourEncode(benchmark::State& state) {
    const auto task = json::decode<QVTask>(taskText());
    measure(state, [&] { benchmark::DoNotOptimize(json::encode(task)); });
}
BENCHMARK(ourEncode)->Name("encode a task with 50 questions/ours, of the models");

} // namespace

} // namespace quorvane
