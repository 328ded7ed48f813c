#include "simulator/plugged/TemporaryFolder.h"

#include <filesystem>
#include <system_error>

#include <stdlib.h>

namespace simulator {

TemporaryFolder::TemporaryFolder()
{
    std::error_code error;
    const std::filesystem::path parent = std::filesystem::temp_directory_path(error);
    std::string form = (parent / "zdr-simulator-XXXXXX").string();
    if (!error && ::mkdtemp(form.data())) {
        m_path = form;
    }
}

TemporaryFolder::~TemporaryFolder()
{
    if (!m_path.empty()) {
        std::error_code ignored; // nobody is left who could do anything about it
        std::filesystem::remove_all(m_path, ignored);
    }
}

} // namespace simulator
