#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#include "JSON/CodingErrors.h"
#include "JSON/JSON.h"

namespace quorvane::json {

/// Writes JSON text. The caller nests its calls as the value nests. Throws an `EncodingError`, with the path of the
/// steps that are open, for what has no form in JSON.
class Writer {
public:
    /// What to do with a text that is not UTF-8, and with a number that is not finite.
    enum class Unencodable { fails, isReplaced };

    explicit Writer(Style theStyle, Unencodable whatToDo = Unencodable::fails);
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;
    ~Writer();

    /// Where the writing has come to: the current member or element of one object or list. Lives as long as that one
    /// is open.
    class Step {
    public:
        explicit Step(Writer& theWriter) : writer(theWriter), outer(theWriter.innermost) { writer.innermost = this; }
        Step(const Step&) = delete;
        Step& operator=(const Step&) = delete;
        ~Step() { writer.innermost = outer; }

        /// Begins a member. @p quoted is the key as it stands in compact text: `,"name":`.
        template <std::size_t size>
        void member(const std::array<char, size>& quoted, std::string_view name) {
            key = name;
            if (writer.style != Style::compact) {
                writer.prettyMember({quoted.data() + 1, size - 1}, count++ == 0);
                return;
            }
            char* const out = writer.room(size);
            if (count++ == 0) {
                std::memcpy(out, quoted.data() + 1, size - 1);
                writer.length += size - 1;
            } else {
                std::memcpy(out, quoted.data(), size);
                writer.length += size;
            }
        }
        /// Begins a member under a key that is not known beforehand.
        void member(std::string_view name) {
            key = name;
            writer.separate(count++ == 0);
            writer.text(name);
            writer.append(writer.style == Style::compact ? ":" : ": ");
        }
        /// Begins the next element of a list.
        void element() {
            isIndex = true;
            writer.separate(count++ == 0);
        }

    private:
        friend class Writer;
        Writer& writer;
        Step* outer;
        std::string_view key;
        std::int64_t count = 0;
        bool isIndex = false;
    };

    void beginObject() { open('{'); }
    void endObject(const Step& step) { close('}', step.count == 0); }
    void beginList() { open('['); }
    void endList(const Step& step) { close(']', step.count == 0); }

    void text(std::string_view value);
    void integer(std::int64_t value);
    void number(double value);
    void number(float value);
    void boolean(bool value) { append(value ? std::string_view("true") : std::string_view("false")); }
    void null() { append("null"); }
    /// For a value that has no form in JSON.
    void nothing();

    [[noreturn]] void fail(const std::string& description) const;

    [[nodiscard]] std::string take() const { return {buffer.get(), length}; }

private:
    friend class Step;

    /// Room for @p more characters; the place to write them to.
    char* room(std::size_t more) {
        if (capacity - length < more) {
            grow(more);
        }
        return buffer.get() + length;
    }
    void wroteTo(const char* end) { length = static_cast<std::size_t>(end - buffer.get()); }
    void append(std::string_view piece) {
        std::memcpy(room(piece.size()), piece.data(), piece.size());
        length += piece.size();
    }

    void grow(std::size_t more);
    void open(char bracket);
    void close(char bracket, bool isEmpty);
    void separate(bool isFirst);
    void newLine();
    void prettyMember(std::string_view quoted, bool isFirst);

    const Style style;
    const Unencodable unencodable;
    int depth = 0;
    Step* innermost = nullptr;
    std::unique_ptr<char[]> buffer;
    std::size_t capacity = 0;
    std::size_t length = 0;
};

} // namespace quorvane::json
