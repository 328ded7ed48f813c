#include "simulator/plugged/PluggedCan.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace simulator {

namespace {

constexpr char libraryPathVariable[] = "LD_LIBRARY_PATH";

/// Where the double of the CAN library lies: seen from this program always in the same place, in
/// the build tree and after the installation.
std::filesystem::path libraryFolder()
{
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    return (program.parent_path() / ZDR_CANLIB_FOLDER).lexically_normal();
}

} // namespace

PluggedCan::PluggedCan(ServingLoop &loop, const Identity &identity, int kiloBitsPerSecond)
    : m_loop(loop)
    , m_module(identity)
    , m_bus(m_module, kiloBitsPerSecond)
{
}

PluggedCan::~PluggedCan()
{
    if (m_server) {
        m_server->detach();
    }
}

std::vector<std::string> PluggedCan::environment() const
{
    const char *others = std::getenv(libraryPathVariable);
    const std::string rest = others && *others ? std::string(":") + others : std::string();
    return {std::string(libraryPathVariable) + "=" + libraryFolder().string() + rest,
            std::string(canBusVariable) + "=" + socketPath()};
}

std::string PluggedCan::plug()
{
    if (m_server) {
        return "the CAN interface is plugged in already";
    }
    std::error_code error;
    const std::filesystem::path library = libraryFolder() / "libcanlib.so.1";
    if (!std::filesystem::exists(library, error)) {
        return "no CAN library: " + library.string();
    }
    if (m_folder.path().empty()) {
        return "cannot make a temporary folder";
    }
    auto server = std::make_unique<CanBusServer>(m_bus, socketPath());
    if (!server->isListening()) {
        return "cannot listen at the socket " + socketPath();
    }
    m_server = std::move(server);
    m_server->attach(m_loop);
    return {};
}

std::string PluggedCan::unplug()
{
    if (!m_server) {
        return "the CAN interface is not plugged in";
    }
    m_server->detach();
    m_server.reset();
    return {};
}

std::string PluggedCan::socketPath() const
{
    return m_folder.path() + "/can";
}

} // namespace simulator
