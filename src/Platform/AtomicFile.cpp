#include "Platform/AtomicFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

namespace morvel {

namespace {

namespace fs = std::filesystem;

class Descriptor {
public:
    explicit Descriptor(int fd) : fd_(fd) {}
    ~Descriptor() {
        if (fd_ < 0) return;
        const int reason = errno;
        ::close(fd_);
        errno = reason;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int get() const { return fd_; }

private:
    const int fd_;
};

bool writeAll(int fd, std::string_view content) {
    while (!content.empty()) {
        const ssize_t written = ::write(fd, content.data(), content.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return false;
        content.remove_prefix(static_cast<size_t>(written));
    }
    return true;
}

bool writeSynced(const std::string& path, std::string_view content) {
    const Descriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
    return file.get() >= 0 && writeAll(file.get(), content) && ::fsync(file.get()) == 0;
}

}  // namespace

std::optional<std::string> readFile(const std::string& path, size_t mostBytes) {
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (file.get() < 0) return std::nullopt;
    struct stat status {};
    if (::fstat(file.get(), &status) != 0) return std::nullopt;
    // A pipe or device under the name would block or never end.
    errno = S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
    if (!S_ISREG(status.st_mode)) return std::nullopt;
    std::string content;
    char buffer[16384];
    for (;;) {
        const ssize_t n = ::read(file.get(), buffer, sizeof buffer);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) return std::nullopt;
        if (n == 0) return content;
        content.append(buffer, static_cast<size_t>(n));
        errno = EFBIG;
        if (content.size() > mostBytes) return std::nullopt;
    }
}

bool replaceFile(const std::string& path, std::string_view content) {
    std::error_code error;
    fs::path target = path;
    if (fs::is_symlink(target, error)) target = fs::weakly_canonical(target, error);
    fs::create_directories(target.parent_path(), error);
    const std::string temporary = target.string() + ".new";
    if (!writeSynced(temporary, content) || ::rename(temporary.c_str(), target.c_str()) != 0) {
        const int reason = errno;
        ::unlink(temporary.c_str());
        errno = reason;
        return false;
    }
    // The rename itself reaches the disk with its folder; without that the old content may be back after a crash.
    const Descriptor folder(::open(target.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.get() >= 0) ::fsync(folder.get());
    return true;
}

}  // namespace morvel
