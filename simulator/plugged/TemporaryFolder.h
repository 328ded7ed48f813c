#pragma once

#include <string>

namespace simulator {

/// A folder for this user alone, below that for temporary files. Goes away with all that is in it
/// when the object ends.
class TemporaryFolder
{
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder &) = delete;
    TemporaryFolder &operator=(const TemporaryFolder &) = delete;

    /// Its path; empty, if none could be made.
    const std::string &path() const { return m_path; }

private:
    std::string m_path;
};

} // namespace simulator
