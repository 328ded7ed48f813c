#include "serial/RingBuffer.h"

#include <algorithm>
#include <cstring>

char *RingBuffer::reserve(qsizetype size)
{
    if (isEmpty()) {
        m_chunks.first().resize(qMax(BlockSize, size));
        m_tail = size;
        m_total = size;
        return m_chunks.first().data();
    }
    QByteArray &last = m_chunks.last();
    const bool hasRoom = size <= last.size() - m_tail;
    if (!hasRoom && 2 * m_tail >= last.size()) {
        // More than half of the chunk is in use: moving it would cost more than a new one.
        last.resize(m_tail);
        m_chunks.append(QByteArray(qMax(BlockSize, size), Qt::Uninitialized));
        ++m_tailIndex;
        m_tail = size;
        m_total += size;
        return m_chunks.last().data();
    }
    if (!hasRoom) {
        last.resize(m_tail + size);
    }
    char *const begin = last.data() + m_tail;
    m_tail += size;
    m_total += size;
    return begin;
}

void RingBuffer::free(qsizetype size)
{
    if (size >= m_total) {
        recycle();
        return;
    }
    m_total -= size;
    // Bytes are left, so the loop ends before the last chunk is used up.
    while (size >= nextBlockSize()) {
        size -= nextBlockSize();
        m_chunks.removeFirst();
        --m_tailIndex;
        m_head = 0;
    }
    m_head += size;
}

void RingBuffer::chop(qsizetype size)
{
    if (size >= m_total) {
        recycle();
        return;
    }
    m_total -= size;
    while (m_tailIndex > 0 && size >= m_tail) {
        size -= m_tail;
        m_chunks.removeLast();
        --m_tailIndex;
        m_tail = m_chunks.last().size();
    }
    m_tail -= size;
}

void RingBuffer::clear()
{
    keepFirstChunk();
    m_chunks.first().clear();
}

void RingBuffer::append(const char *data, qsizetype size)
{
    char *const target = reserve(size);
    if (size == 1) {
        *target = *data;
    } else if (size > 0) {
        std::memcpy(target, data, static_cast<size_t>(size));
    }
}

qsizetype RingBuffer::read(char *data, qsizetype maxSize)
{
    const qsizetype size = qMin(maxSize, m_total);
    if (size == 1) {
        *data = *nextBlock();
        free(1);
        return 1;
    }
    qsizetype done = 0;
    while (done < size) {
        const qsizetype block = qMin(size - done, nextBlockSize());
        std::memcpy(data + done, nextBlock(), static_cast<size_t>(block));
        free(block);
        done += block;
    }
    return done;
}

bool RingBuffer::contains(char byte) const
{
    for (qsizetype i = 0; i <= m_tailIndex; ++i) {
        const char *const chunk = m_chunks.at(i).constData();
        const char *const end = chunk + chunkEnd(i);
        if (std::find(chunk + chunkBegin(i), end, byte) != end) {
            return true;
        }
    }
    return false;
}

// Emptied by use: the first chunk goes back to the block size, ready for the next message.
void RingBuffer::recycle()
{
    keepFirstChunk();
    QByteArray &first = m_chunks.first();
    if (first.size() != BlockSize) {
        first.resize(BlockSize);
        first.squeeze();
    }
}

void RingBuffer::keepFirstChunk()
{
    m_chunks.resize(1);
    m_head = 0;
    m_tail = 0;
    m_tailIndex = 0;
    m_total = 0;
}
