#pragma once

#include <QByteArray>
#include <QList>

/// First-in first-out queue of bytes, kept as a list of chunks, so that bytes which are held are
/// never moved for new ones.
///
/// Space is reserved at the tail and handed out as a pointer to fill; what turns out not to be
/// needed is chopped off again. An emptied buffer keeps its first chunk at the block size, so a
/// steady exchange of short messages allocates nothing; clear() gives that memory back.
class RingBuffer
{
public:
    /// Least size of a new chunk in bytes.
    static constexpr qsizetype BlockSize = 16384;

    /// Number of bytes held.
    qsizetype size() const { return m_total; }
    bool isEmpty() const { return m_total == 0; }

    /// Appends @p size bytes, 0 or more, whose content is undefined, and returns where they begin.
    /// The pointer is good until the next change of the buffer.
    char *reserve(qsizetype size);
    /// Takes @p size bytes away from the head; at most all of them.
    void free(qsizetype size);
    /// Takes @p size bytes away from the tail; at most all of them.
    void chop(qsizetype size);
    /// Drops everything and gives the memory back.
    void clear();

    /// The bytes at the head that lie in one piece. Undefined while the buffer is empty.
    const char *nextBlock() const { return m_chunks.first().constData() + m_head; }
    /// Length of nextBlock(), 0 only if the buffer is empty.
    qsizetype nextBlockSize() const { return chunkEnd(0) - m_head; }

    /// Appends a copy of @p size bytes at @p data.
    void append(const char *data, qsizetype size);
    /// Moves up to @p maxSize bytes, 0 or more, from the head to @p data and returns how many.
    qsizetype read(char *data, qsizetype maxSize);
    /// Whether @p byte is among the bytes held.
    bool contains(char byte) const;

    /// The chunks, of which there is always at least one; for diagnosis.
    const QList<QByteArray> &chunks() const { return m_chunks; }
    /// Offset of the oldest byte in the first chunk.
    qsizetype head() const { return m_head; }
    /// Offset behind the newest byte in the last chunk.
    qsizetype tail() const { return m_tail; }
    /// Index of the last chunk.
    qsizetype tailIndex() const { return m_tailIndex; }

private:
    void recycle();
    void keepFirstChunk();
    qsizetype chunkBegin(qsizetype index) const { return index == 0 ? m_head : 0; }
    qsizetype chunkEnd(qsizetype index) const
    {
        return index == m_tailIndex ? m_tail : m_chunks.at(index).size();
    }

    QList<QByteArray> m_chunks = {QByteArray()};
    qsizetype m_head = 0;
    qsizetype m_tail = 0;
    qsizetype m_tailIndex = 0;
    qsizetype m_total = 0;
};
