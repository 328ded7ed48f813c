// A program that calls the CAN maker's library, as the loader finds it, in the plainest way. What
// the calls answer goes to the standard output, a line each.

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include <dlfcn.h>

namespace {

using namespace std::chrono_literals;

constexpr auto replyTime = 510ms;
constexpr auto patience = 30s;
constexpr auto pause = 5ms;

/// The library's functions that an exchange needs.
class Library
{
public:
    Library()
        : m_library(::dlopen("libcanlib.so.1", RTLD_NOW))
    {
        resolve(initialize, "canInitializeLibrary");
        resolve(open, "canOpenChannel");
        resolve(setBusParams, "canSetBusParams");
        resolve(busOn, "canBusOn");
        resolve(write, "canWrite");
        resolve(read, "canRead");
        resolve(close, "canClose");
    }

    bool isComplete() const { return m_isComplete; }

    void (*initialize)() = nullptr;
    int (*open)(int, int) = nullptr;
    int (*setBusParams)(int, long, unsigned, unsigned, unsigned, unsigned, unsigned) = nullptr;
    int (*busOn)(int) = nullptr;
    int (*write)(int, long, void *, unsigned, unsigned) = nullptr;
    int (*read)(int, long *, void *, unsigned *, unsigned *, unsigned long *) = nullptr;
    int (*close)(int) = nullptr;

private:
    template <typename Function>
    void resolve(Function &function, const char *name)
    {
        function =
            m_library ? reinterpret_cast<Function>(::dlsym(m_library, name)) : Function(nullptr);
        m_isComplete = m_isComplete && function;
    }

    void *m_library; // stays loaded until the end
    bool m_isComplete = true;
};

/// What @p attempt returns when it is positive, or after @p time.
template <typename Attempt>
int firstPositive(Attempt attempt, std::chrono::milliseconds time)
{
    const auto deadline = std::chrono::steady_clock::now() + time;
    int result = attempt();
    while (result <= 0 && std::chrono::steady_clock::now() < deadline) {
        std::this_thread::sleep_for(pause);
        result = attempt();
    }
    return result;
}

void say(const std::string &line)
{
    std::puts(line.c_str());
    std::fflush(stdout);
}

/// A channel at the speed @p code, for which it waits; negative, if there is none.
int takeChannel(const Library &library, long code)
{
    const auto open = [&library] {
        library.initialize();
        return library.open(0, 8);
    };
    const int handle = firstPositive(open, patience);
    const bool isReady = handle > 0 && library.setBusParams(handle, code, 0, 0, 0, 0, 0) == 0
        && library.busOn(handle) == 0;
    return isReady ? handle : -1;
}

/// The next frame, "002: 01 64 06", or "nothing".
std::string takeFrame(const Library &library, int handle)
{
    long identifier = 0;
    unsigned length = 0;
    std::array<unsigned char, 8> data{};
    const auto read = [&] {
        return library.read(handle, &identifier, data.data(), &length, nullptr, nullptr) == 0;
    };
    if (firstPositive(read, replyTime) == 0) {
        return "nothing";
    }
    std::array<char, 8> text{};
    std::snprintf(text.data(), text.size(), "%03lx:", static_cast<unsigned long>(identifier));
    std::string line = text.data();
    for (unsigned i = 0; i < length; ++i) {
        std::snprintf(text.data(), text.size(), " %02x", data[i]);
        line += text.data();
    }
    return line;
}

/// Sends each of @p requests, data bytes as one hexadecimal number, to @p address and prints what
/// comes back.
int exchange(const Library &library, long code, long address,
             const std::vector<std::string> &requests)
{
    const int handle = takeChannel(library, code);
    for (const std::string &request : requests) {
        unsigned long long number = std::strtoull(request.c_str(), nullptr, 16);
        std::array<unsigned char, 8> data{};
        for (auto byte = data.rbegin(); byte != data.rend(); ++byte, number >>= 8) {
            *byte = static_cast<unsigned char>(number & 0xff);
        }
        const int written = library.write(handle, address, data.data(), data.size(), 0);
        say(written == 0 ? takeFrame(library, handle) : "not written");
    }
    return library.close(handle) == 0 ? 0 : 1;
}

/// "ready" once the channel is open, "gone" when the interface has been pulled out, "back" when the
/// channel can be opened again.
int hold(const Library &library, long code)
{
    const int handle = takeChannel(library, code);
    say(handle > 0 ? "ready" : "failed");
    const auto isGone = [&library, handle] { return library.busOn(handle) != 0; };
    say(firstPositive(isGone, patience) > 0 ? "gone" : "still there");
    const int next = takeChannel(library, code);
    say(next > 0 ? "back" : "failed");
    return library.close(next) == 0 ? 0 : 1;
}

} // namespace

int main(int argc, char **argv)
{
    const Library library;
    if (!library.isComplete() || argc < 3) {
        say("no library");
        return 1;
    }
    const long code = std::atol(argv[2]);
    if (std::strcmp(argv[1], "hold") == 0) {
        return hold(library, code);
    }
    if (argc < 4) {
        return 2;
    }
    return exchange(library, code, std::atol(argv[3]), {argv + 4, argv + argc});
}
