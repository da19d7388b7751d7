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
        if (S_ISREG(status.st_mode) && status.st_nlink == 1 && !unknown) {
            // A file that may not be written may not be replaced either.
            if (faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0) {
                fail(errno);
            }
            openBeside(real, &status);
        }
    } else if (errno == ENOENT && lstat(path.c_str(), &status) != 0) {
        openBeside(path, nullptr);
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

void OutputFile::openBeside(const std::string& theTarget, const struct stat* before) {
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
    const int number = fileno(file.get());
    if (before != nullptr &&
        (fchown(number, before->st_uid, before->st_gid) != 0 || fchmod(number, before->st_mode & 07777U) != 0)) {
        file = nullptr;
        unlink(name.c_str());
        return;
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
