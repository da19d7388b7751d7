#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

#include <sys/stat.h>

namespace quorvane::tool {

/// A file that a command writes. It has its name once it is finished, and what had the name before has it until then.
/// What is no regular file, such as a device or a pipe, is written to at once, and so is a regular one that has another
/// name too, that belongs to somebody whose the new one could not be, or whose folder takes no other.
class OutputFile {
public:
    /// Throws a `Failure` when the file cannot be written.
    explicit OutputFile(std::string thePath);
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    /// What is not finished is dropped.
    ~OutputFile();

    /// Whether it has its name only once it is finished.
    [[nodiscard]] bool isStaged() const { return !staged.empty(); }

    /// Does not throw: `finish` tells what went wrong.
    void write(std::string_view text);
    /// Makes sure that everything arrived. Throws a `Failure` when it did not. Once, and last.
    void finish();

private:
    struct Close {
        void operator()(std::FILE* opened) const { std::fclose(opened); }
    };

    /// None is made where the folder takes none. It gets mode and owner of what is there @p before.
    void openBeside(const std::string& theTarget, const struct stat* before);
    void openAtOnce();
    [[noreturn]] void fail(int error) const;

    const std::string path;
    std::unique_ptr<std::FILE, Close> file;
    /// The file that is written until it gets the name `target`; empty where it has its name.
    std::string staged;
    std::string target;
    /// Of the first write that failed; 0 for none.
    int problem = 0;
};

} // namespace quorvane::tool
