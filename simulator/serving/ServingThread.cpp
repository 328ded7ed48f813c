#include "simulator/serving/ServingThread.h"

namespace simulator {

ServingThread::ServingThread(Link &link)
    : ServingThread([&link](ServingLoop &loop) { loop.add(link); })
{
}

ServingThread::ServingThread(const std::function<void(ServingLoop &)> &attach)
{
    attach(m_loop);
    m_thread = std::thread([this] { m_loop.run(); });
}

ServingThread::~ServingThread()
{
    stop();
}

void ServingThread::stop()
{
    if (m_thread.joinable()) {
        m_loop.stop();
        m_thread.join();
    }
}

} // namespace simulator
