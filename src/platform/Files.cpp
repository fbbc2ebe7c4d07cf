#include "platform/Files.h"

#include <dirent.h>
#include <fcntl.h>
#include <strings.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <utility>

namespace platform {

namespace {

struct FolderCloser {
    void operator()(DIR* folder) const { closedir(folder); }
};
using Folder = std::unique_ptr<DIR, FolderCloser>;

// A file descriptor that closes itself.
class Descriptor {
public:
    explicit Descriptor(int fd) : fd(fd) {}
    ~Descriptor() { Close(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    bool IsOpen() const { return fd >= 0; }
    int Get() const { return fd; }
    // True = failure: some file systems report only here that a write was lost.
    bool Close() {
        const int old = std::exchange(fd, -1);
        return old >= 0 && close(old) != 0;
    }

private:
    int fd;
};

bool Exists(const std::string& path) {
    struct stat status {};
    return lstat(path.c_str(), &status) == 0;
}

bool IsDotName(const char* name) {
    return std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0;
}

// Name of the entry of `folder` ("" is the working folder) that differs from `name` by letter case
// alone; `name` when there is none. Of several, the first in byte order, so that every run opens
// the same.
std::string NameOnDisk(const std::string& folder, const std::string& name) {
    std::string best;
    const Folder entries(opendir(folder.empty() ? "." : folder.c_str()));
    while (entries) {
        const dirent* entry = readdir(entries.get());
        if (entry == nullptr) {
            break;
        }
        if (strcasecmp(entry->d_name, name.c_str()) == 0 &&
            (best.empty() || entry->d_name < best)) {
            best = entry->d_name;
        }
    }
    return best.empty() ? name : best;
}

// Temporary files are called "TARGET.PID.saving": two running games never write into the same
// one, and one whose process is gone is known to be left over.
constexpr const char* kTemporarySuffix = ".saving";

std::string FolderOf(const std::string& path) {
    const size_t slash = path.rfind('/');
    return slash == std::string::npos ? "." : path.substr(0, std::max<size_t>(slash, 1));
}

std::string NameOf(const std::string& path) {
    const size_t slash = path.rfind('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

std::string TemporaryName(const std::string& path) {
    return path + "." + std::to_string(getpid()) + kTemporarySuffix;
}

// The process number in the name of a temporary file of `target`; 0 for any other name.
pid_t WriterOf(const char* name, const std::string& target) {
    if (std::strncmp(name, target.c_str(), target.size()) != 0 || name[target.size()] != '.') {
        return 0;
    }
    const char* digits = name + target.size() + 1;
    char* end = nullptr;
    errno = 0;
    const long pid = std::strtol(digits, &end, 10);
    const bool valid = end != digits && errno == 0 && pid > 0 && pid <= INT_MAX &&
                       std::strcmp(end, kTemporarySuffix) == 0;
    return valid ? static_cast<pid_t>(pid) : 0;
}

void RemoveLeftovers(const std::string& path) {
    const std::string folder = FolderOf(path);
    const std::string target = NameOf(path);
    const Folder entries(opendir(folder.c_str()));
    while (entries) {
        const dirent* entry = readdir(entries.get());
        if (entry == nullptr) {
            return;
        }
        const pid_t writer = WriterOf(entry->d_name, target);
        const bool gone =
            writer == getpid() || (writer > 0 && kill(writer, 0) != 0 && errno == ESRCH);
        if (gone) {
            unlinkat(dirfd(entries.get()), entry->d_name, 0);
        }
    }
}

bool WriteAll(int fd, const void* data, size_t size) {
    const char* rest = static_cast<const char*>(data);
    while (size > 0) {
        const ssize_t written = write(fd, rest, size);
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            return true;
        }
        rest += written;
        size -= static_cast<size_t>(written);
    }
    return false;
}

// Writes a new file and sees it on the disk. `mode` is that of the file it replaces, or 0.
bool WriteNewFile(const std::string& path, const void* data, size_t size, mode_t mode) {
    Descriptor file(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0666));
    if (!file.IsOpen()) {
        return true;
    }
    if (mode != 0) {
        (void)fchmod(file.Get(), mode);  // a file system without modes does not matter
    }
    return WriteAll(file.Get(), data, size) || fsync(file.Get()) != 0 || file.Close();
}

// After a rename: makes the new name last. File systems that cannot do it are safe without.
void FlushFolder(const std::string& path) {
    const Descriptor folder(open(FolderOf(path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.IsOpen()) {
        (void)fsync(folder.Get());
    }
}

// Where a symbolic link leads, so that saving replaces the file and not the player's link.
std::string FollowLinks(const std::string& path) {
    const std::unique_ptr<char, decltype(&std::free)> target(realpath(path.c_str(), nullptr),
                                                             &std::free);
    return target ? target.get() : path;
}

}  // namespace

std::string ResolvePath(const std::string& gamePath) {
    std::string path = gamePath;
    std::replace(path.begin(), path.end(), '\\', '/');
    if (Exists(path)) {
        return path;  // the usual case: written as it is on disk
    }
    std::string resolved;
    bool searching = true;  // until a component that exists in no letter case
    for (size_t start = 0; start <= path.size();) {
        const size_t end = std::min(path.find('/', start), path.size());
        const std::string name = path.substr(start, end - start);
        if (searching && !name.empty() && !IsDotName(name.c_str()) && !Exists(resolved + name)) {
            const std::string found = NameOnDisk(resolved, name);
            searching = Exists(resolved + found);
            resolved += found;
        } else {
            resolved += name;
        }
        if (end < path.size()) {
            resolved += '/';
        }
        start = end + 1;
    }
    return resolved;
}

std::FILE* OpenFile(const std::string& gamePath, const char* mode) {
    return std::fopen(ResolvePath(gamePath).c_str(), mode);
}

bool ReadWholeFile(const std::string& gamePath, std::vector<uint8_t>& bytes, size_t limit) {
    bytes.clear();
    // Without O_NONBLOCK a pipe by the name of a game file would hang the game in open().
    const Descriptor file(open(ResolvePath(gamePath).c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    struct stat status {};
    if (!file.IsOpen() || fstat(file.Get(), &status) != 0 || !S_ISREG(status.st_mode) ||
        status.st_size < 0 || static_cast<uintmax_t>(status.st_size) > limit) {
        return true;
    }
    // The file may change its size while it is read: one byte more is asked for than announced.
    size_t filled = 0;
    bytes.resize(std::min(static_cast<size_t>(status.st_size), limit) + 1);
    for (;;) {
        const ssize_t got = read(file.Get(), bytes.data() + filled, bytes.size() - filled);
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got < 0) {
            bytes.clear();
            return true;
        }
        if (got == 0) {
            break;
        }
        filled += static_cast<size_t>(got);
        if (filled > limit) {
            bytes.clear();
            return true;
        }
        if (filled == bytes.size()) {
            bytes.resize(std::min(filled * 2, limit) + 1);
        }
    }
    bytes.resize(filled);
    return false;
}

bool ReadWholeText(const std::string& gamePath, std::string& text, size_t limit) {
    text.clear();
    std::vector<uint8_t> bytes;
    if (ReadWholeFile(gamePath, bytes, limit)) {
        return true;
    }
    text.reserve(bytes.size());
    for (size_t i = 0; i < bytes.size(); ++i) {
        const bool endsLine = bytes[i] == '\r' && i + 1 < bytes.size() && bytes[i + 1] == '\n';
        if (!endsLine) {
            text.push_back(static_cast<char>(bytes[i]));
        }
    }
    return false;
}

bool WriteWholeFile(const std::string& gamePath, const void* data, size_t size) {
    const std::string path = FollowLinks(ResolvePath(gamePath));
    struct stat old {};
    const bool exists = stat(path.c_str(), &old) == 0;
    // Renaming would replace a file that its owner has write-protected, and a pipe or a device.
    if (exists && (!S_ISREG(old.st_mode) || access(path.c_str(), W_OK) != 0)) {
        return true;
    }
    RemoveLeftovers(path);
    const std::string temporary = TemporaryName(path);
    if (WriteNewFile(temporary, data, size, exists ? old.st_mode & 07777 : 0) ||
        std::rename(temporary.c_str(), path.c_str()) != 0) {
        unlink(temporary.c_str());
        return true;
    }
    FlushFolder(path);
    return false;
}

std::vector<std::string> ListFolder(const std::string& gamePath) {
    std::vector<std::string> names;
    const std::string path = ResolvePath(gamePath);
    const Folder entries(opendir(path.empty() ? "." : path.c_str()));
    while (entries) {
        const dirent* entry = readdir(entries.get());
        if (entry == nullptr) {
            break;
        }
        if (!IsDotName(entry->d_name)) {
            names.emplace_back(entry->d_name);
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

}  // namespace platform
