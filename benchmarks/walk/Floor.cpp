// The least that looking at every entry of a tree costs: openat, getdents64, statx and close, and a stack that one or
// more threads share. It knows no limits, no mount points and no errors, names nothing and holds as many descriptors as
// the tree asks for, so no walker that keeps its promises can be expected to be faster. Shares no code with the
// program.
#include <dirent.h>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <condition_variable>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace {

/// An open folder, closed when nothing below it needs it any more.
class Folder final {
public:
    explicit Folder(int descriptor) : m_descriptor(descriptor) {}

    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    ~Folder() {
        if (m_descriptor >= 0) {
            ::close(m_descriptor);
        }
    }

    [[nodiscard]] int descriptor() const { return m_descriptor; }

private:
    const int m_descriptor;
};

/// A folder to open by its name, or, where the name is empty, one to go on reading.
struct Work {
    std::shared_ptr<Folder> folder;
    std::string name;
};

struct Counts {
    std::int64_t entries = 0;
    std::int64_t files = 0;
    std::int64_t links = 0;
    std::int64_t bytes = 0;
};

/// Work for all threads, newest first.
class Stack final {
public:
    explicit Stack(int threads) : m_threads(threads) {}

    void push(std::vector<Work>& work) {
        {
            const std::scoped_lock guard(m_lock);
            for (Work& one : work) {
                m_work.push_back(std::move(one));
            }
        }
        if (work.size() > 1) {
            m_wake.notify_all();
        } else {
            m_wake.notify_one();
        }
        work.clear();
    }

    /// Waits for work; nothing once there is none and nobody is left who could make some.
    std::optional<Work> pop() {
        std::unique_lock guard(m_lock);
        ++m_waiting;
        m_wake.wait(guard, [this] { return !m_work.empty() || m_waiting == m_threads; });
        if (m_work.empty()) {
            m_wake.notify_all();
            return std::nullopt;
        }
        --m_waiting;
        Work work = std::move(m_work.back());
        m_work.pop_back();
        return work;
    }

private:
    const int m_threads;
    int m_waiting = 0;
    std::vector<Work> m_work;
    std::mutex m_lock;
    std::condition_variable m_wake;
};

/// One thread's walk.
class Walker final {
public:
    explicit Walker(Stack& stack) : m_stack(stack) {}

    void run() {
        while (auto work = m_stack.pop()) {
            visit(std::move(*work));
        }
    }

    [[nodiscard]] const Counts& counts() const { return m_counts; }

private:
    void visit(Work work) {
        std::shared_ptr<Folder> folder = std::move(work.folder);
        if (!work.name.empty()) {
            const int descriptor =
                ::openat(folder->descriptor(), work.name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
            if (descriptor < 0) {
                return;
            }
            folder = std::make_shared<Folder>(descriptor);
        }
        // A buffer that is nearly full has more behind it, which another thread may read meanwhile.
        while (const auto length = read(*folder)) {
            const bool isFull = length > m_buffer.size() - sizeof(dirent64);
            if (isFull) {
                m_found.push_back({folder, {}});
                m_stack.push(m_found);
            }
            look(folder, length);
            if (!m_found.empty()) {
                m_stack.push(m_found);
            }
            if (isFull) {
                return;
            }
        }
    }

    std::size_t read(const Folder& folder) {
        const auto length = ::syscall(SYS_getdents64, folder.descriptor(), m_buffer.data(), m_buffer.size());
        return length > 0 ? static_cast<std::size_t>(length) : 0;
    }

    void look(const std::shared_ptr<Folder>& folder, std::size_t length) {
        for (std::size_t at = 0; at < length;) {
            const char* const record = m_buffer.data() + at;
            unsigned short recordLength = 0;
            std::memcpy(&recordLength, record + offsetof(dirent64, d_reclen), sizeof recordLength);
            const auto type = static_cast<unsigned char>(record[offsetof(dirent64, d_type)]);
            entry(folder, type, record + offsetof(dirent64, d_name));
            at += recordLength;
        }
    }

    void entry(const std::shared_ptr<Folder>& folder, unsigned char type, const char* name) {
        if (std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0) {
            return;
        }
        ++m_counts.entries;
        if (type == DT_DIR) {
            m_found.push_back({folder, name});
        } else if (type == DT_LNK) {
            ++m_counts.links;
        } else if (type == DT_REG) {
            struct statx status {};

            if (::statx(folder->descriptor(), name, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT | AT_STATX_DONT_SYNC,
                        STATX_TYPE | STATX_BLOCKS, &status) == 0) {
                constexpr std::int64_t blockBytes = 512;
                ++m_counts.files;
                m_counts.bytes += static_cast<std::int64_t>(status.stx_blocks) * blockBytes;
            }
        }
    }

    Stack& m_stack;
    Counts m_counts;
    std::vector<Work> m_found;
    alignas(dirent64) std::array<char, 32'768> m_buffer{};
};

Counts walk(const char* root, int threadCount) {
    Stack stack(threadCount);
    std::vector<Work> first;
    first.push_back({std::make_shared<Folder>(AT_FDCWD), root});
    stack.push(first);
    std::vector<std::unique_ptr<Walker>> walkers;
    walkers.reserve(static_cast<std::size_t>(threadCount));
    for (int i = 0; i < threadCount; ++i) {
        walkers.push_back(std::make_unique<Walker>(stack));
    }
    std::vector<std::thread> threads;
    threads.reserve(walkers.size() - 1);
    for (int i = 1; i < threadCount; ++i) {
        threads.emplace_back([&walker = *walkers[static_cast<std::size_t>(i)]] { walker.run(); });
    }
    walkers.front()->run();
    for (std::thread& thread : threads) {
        thread.join();
    }
    Counts all;
    for (const auto& walker : walkers) {
        all.entries += walker->counts().entries;
        all.files += walker->counts().files;
        all.links += walker->counts().links;
        all.bytes += walker->counts().bytes;
    }
    return all;
}

}  // namespace

int main(int count, char** arguments) {
    const int threads = count == 3 ? static_cast<int>(std::strtol(arguments[1], nullptr, 10)) : 0;
    if (threads < 1) {
        std::cerr << "usage: walk_floor THREADS FOLDER\n";
        return EXIT_FAILURE;
    }
    rlimit descriptors{};
    if (::getrlimit(RLIMIT_NOFILE, &descriptors) == 0) {
        descriptors.rlim_cur = descriptors.rlim_max;
        static_cast<void>(::setrlimit(RLIMIT_NOFILE, &descriptors));
    }
    const Counts counts = walk(arguments[2], threads);
    std::cout << R"({"entries":)" << counts.entries << R"(,"files":)" << counts.files << R"(,"links":)" << counts.links
              << R"(,"bytes":)" << counts.bytes << "}\n";
    return EXIT_SUCCESS;
}
