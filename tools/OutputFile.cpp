#include "tools/OutputFile.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tools/Failure.h"
#include "tools/Text.h"

namespace quorvane::tool {

OutputFile::OutputFile(std::string thePath) : path(std::move(thePath)) {
    struct stat status {};
    if (stat(path.c_str(), &status) == 0) {
        std::error_code unknown;
        const std::string real = std::filesystem::canonical(path, unknown).string();
        if (S_ISREG(status.st_mode) && !unknown) {
            // A file that may not be written may not be replaced either.
            if (faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0) {
                fail(errno);
            }
            openBeside(real, status.st_mode & 07777U);
        }
    } else if (errno == ENOENT && lstat(path.c_str(), &status) != 0) {
        openBeside(path, std::nullopt);
    }
    if (!file) {
        openAtOnce();
    }
}

OutputFile::~OutputFile() {
    if (!staged.empty()) {
        unlink(staged.c_str());
    }
}

void OutputFile::openBeside(const std::string& theTarget, std::optional<unsigned> mode) {
    const std::filesystem::path folder = std::filesystem::path(theTarget).parent_path();
    std::string name;
    // One of an earlier process of this number may have stayed.
    for (int i = 0; !file && (i == 0 || errno == EEXIST); ++i) {
        name = (folder / (".quorvane-" + std::to_string(getpid()) + "-" + std::to_string(i))).string();
        file.reset(std::fopen(name.c_str(), "wbxe"));
    }
    if (!file) {
        if (errno == ENOSPC || errno == EDQUOT) {
            fail(errno);
        }
        return;
    }
    if (mode) {
        static_cast<void>(fchmod(fileno(file.get()), *mode));
    }
    staged = name;
    target = theTarget;
}

void OutputFile::openAtOnce() {
    file.reset(std::fopen(path.c_str(), "wbe"));
    if (!file) {
        fail(errno);
    }
}

void OutputFile::write(std::string_view text) {
    errno = 0;
    if (std::fwrite(text.data(), 1, text.size(), file.get()) != text.size() && problem == 0) {
        problem = errno == 0 ? EIO : errno;
    }
}

void OutputFile::finish() {
    if (std::fclose(file.release()) != 0 && problem == 0) {
        problem = errno;
    }
    if (problem == 0 && !staged.empty()) {
        if (std::rename(staged.c_str(), target.c_str()) == 0) {
            staged.clear();
        } else {
            problem = errno;
        }
    }
    if (problem != 0) {
        fail(problem);
    }
}

void OutputFile::fail(int error) const {
    throw Failure(printable(path) + ": " + std::strerror(error));
}

} // namespace quorvane::tool
