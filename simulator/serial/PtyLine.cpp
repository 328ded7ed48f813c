#include "simulator/serial/PtyLine.h"

namespace simulator {

PtyLine::PtyLine(Module &module, int baudRate)
    : m_endpoint(module, m_faults, m_log)
    , m_link(m_pty.masterFd(), m_endpoint, LineSettings{baudRate, 8, 'N', 1})
{
}

} // namespace simulator
