#pragma once

#include "simulator/program/Session.h"
#include "simulator/protocol/Module.h"
#include "simulator/serial/PtyLine.h"

namespace simulator {

/// The mode `--pty`: one module on a pseudo-terminal, until told to end.
class PtySession : public Session
{
public:
    explicit PtySession(const Options &options);
    ~PtySession() override;

protected:
    std::string start() override;

private:
    std::string makeLink();

    Module m_module;
    PtyLine m_line;
    bool m_linked = false;
};

} // namespace simulator
