#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

#include "JSON/Decoder.h"
#include "JSON/JSON.h"
#include "JSON/KeyTable.h"

namespace quorvane::json {

/// Fills a model from an object in one pass over it.
template <class Model>
class ObjectReader {
public:
    ObjectReader(Model& theModel, Reading& theReading) : model(theModel), reading(theReading) {}

    bool read(Element value) {
        if (!value.isObject()) {
            return reading.mismatch("object", value);
        }
        prepare(model);
        const Members members(value);
        const auto end = members.end();
        for (auto position = members.begin(); position != end; ++position) {
            const Member member = *position;
            const std::size_t candidate = Table::index.candidate(member.key);
            if (readCandidate(candidate, member, std::make_index_sequence<Table::keyCount>())) [[likely]] {
                continue;
            }
            if (!comesAgain(position, end)) {
                reading.within(member.key);
                return false;
            }
            reading.forget();
        }
        finishPairs(std::make_index_sequence<Table::rowCount>());
        if constexpr (requires { model.didDecode(); }) {
            model.didDecode();
        }
        return true;
    }

private:
    using Table = KeyTable<Model>;
    using Iterator = Members::Iterator;

    static void prepare(Model& object) {
        if constexpr (requires { object.willDecode(); }) {
            object.willDecode();
        }
    }

    /// Of equal keys the last wins, so an earlier one may hold anything.
    static bool comesAgain(Iterator position, Iterator end) {
        const std::string_view key = (*position).key;
        while (++position != end) {
            if ((*position).key == key) {
                return true;
            }
        }
        return false;
    }

    using Reader = bool (*)(ObjectReader&, std::string_view, Element);

    template <std::size_t... entries>
    bool readCandidate(std::size_t candidate, const Member& member, std::index_sequence<entries...>) {
        static constexpr std::array<Reader, sizeof...(entries) + 1> readers{&ObjectReader::template readKey<entries>...,
                                                                            &ObjectReader::passOver};
        return readers[candidate](*this, member.key, member.value);
    }

    /// Reads the key that none of the table can be.
    static bool passOver(ObjectReader&, std::string_view, Element) { return true; }

    template <std::size_t entry>
    static bool readKey(ObjectReader& reader, std::string_view key, Element value) {
        if (key != Table::entries[entry].name) {
            return true;
        }
        constexpr std::size_t row = Table::entries[entry].row;
        constexpr std::size_t part = Table::entries[entry].part;
        if (reader.isRepeated(entry)) [[unlikely]] {
            reader.template reset<row, part>();
        }
        if constexpr (Table::template row<row>().isLenient) {
            if (!value.isNull()) {
                const Reading::Quietly quietly(reader.reading);
                (void)reader.template readRow<row, part>(value);
            }
            return true;
        } else {
            return reader.template readRow<row, part>(value);
        }
    }

    template <std::size_t row, std::size_t part>
    bool readRow(Element value) {
        using Row = typename Table::template Row<row>;
        using Field = typename Row::Field;
        constexpr auto& description = Table::template row<row>();
        if constexpr (Row::isPair) {
            double number = 0;
            if (value.isNull()) {
                return true;
            }
            if (!readNumber(value, number, "number", reading)) {
                return false;
            }
            pairs[Table::pairIndex(row)].parts[part] = number;
            return true;
        } else if constexpr (Row::isDirect && !(description.isLenient && HasTable<Field>)) {
            return Decoder::read(value, model.*std::get<0>(description.path), reading);
        } else {
            if constexpr (!HasTable<Field>) {
                if (auto* const found = existing<row>(model)) {
                    return Decoder::read(value, *found, reading);
                }
            }
            Field field{};
            if (!Decoder::read(value, field, reading)) {
                return false;
            }
            target<row>(model) = std::move(field);
            return true;
        }
    }

    template <std::size_t row>
    static auto* existing(Model& object) {
        return std::apply([&](auto... path) { return foundField(object, path...); }, Table::template row<row>().path);
    }

    template <std::size_t row>
    static auto& target(Model& object) {
        return std::apply(
            [&](auto... path) -> auto& { return madeField(object, path...); }, Table::template row<row>().path);
    }

    bool isRepeated(std::size_t entry) {
        const std::uint64_t bit = std::uint64_t{1} << (entry % 64);
        const bool repeated = (seen[entry / 64] & bit) != 0;
        seen[entry / 64] |= bit;
        return repeated;
    }

    /// Takes back what an earlier equal key did.
    template <std::size_t row, std::size_t part>
    void reset() {
        if constexpr (Table::template Row<row>::isPair) {
            pairs[Table::pairIndex(row)].parts[part].reset();
        } else {
            const auto fresh = std::make_unique<Model>();
            prepare(*fresh);
            target<row>(model) = std::move(target<row>(*fresh));
        }
    }

    template <std::size_t... rows>
    void finishPairs(std::index_sequence<rows...>) {
        (finishPair<rows>(), ...);
    }

    template <std::size_t row>
    void finishPair() {
        if constexpr (Table::template Row<row>::isPair) {
            const auto& [first, second] = pairs[Table::pairIndex(row)].parts;
            if (first && second) {
                auto& field = target<row>(model);
                if constexpr (isOptional<std::remove_reference_t<decltype(field)>>) {
                    field = PairTraits<typename std::remove_reference_t<decltype(field)>::value_type>::make(*first,
                                                                                                            *second);
                } else {
                    field = PairTraits<std::remove_reference_t<decltype(field)>>::make(*first, *second);
                }
            }
        }
    }

    struct Pair {
        std::array<std::optional<double>, 2> parts;
    };

    Model& model;
    Reading& reading;
    std::array<std::uint64_t, Table::keyCount / 64 + 1> seen{};
    std::array<Pair, Table::pairCount> pairs{};
};

template <class Model>
void decode(const Document& document, Model& model) {
    Reading reading;
    if (!Decoder::read(rootOf(document), model, reading)) {
        reading.raise();
    }
}

} // namespace quorvane::json
