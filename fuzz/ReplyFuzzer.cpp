// What a module sends, as the two handlers decode it: datagrams of the serial line and frames of
// the bus. Any bytes are an answer; each field and each text has to say what those bytes are.

#include "comm/CANZDRLReply.h"
#include "comm/Reply.h"
#include "fuzz/Require.h"

#include <QRegularExpression>

#include <cstddef>
#include <cstdint>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t FrameSize = 8;

bool isChar(char field, std::uint8_t byte)
{
    return static_cast<std::uint8_t>(field) == byte;
}

bool isBigEndian(int value, const std::uint8_t *bytes)
{
    const auto bits = static_cast<std::uint32_t>(value);
    return bytes[0] == (bits >> 24) && bytes[1] == ((bits >> 16) & 0xFF)
        && bytes[2] == ((bits >> 8) & 0xFF) && bytes[3] == (bits & 0xFF);
}

bool isCharacters(const QString &text, const std::uint8_t *bytes, qsizetype count)
{
    bool same = text.size() == count;
    for (qsizetype i = 0; same && i < count; ++i) {
        same = text.at(i).unicode() == bytes[i];
    }
    return same;
}

void decodeDatagram(const std::uint8_t *bytes)
{
    static const QRegularExpression dump(u"^Reply\\[0x[0-9A-F]{2}(, 0x[0-9A-F]{2}){8}\\]$"_s);
    static const QRegularExpression fields(u"^Reply\\[(\\d{1,3}, ){4}-?\\d{1,10}, \\d{1,3}\\]$"_s);
    const Reply reply(bytes);
    require(reply.valid());
    require(isChar(reply.replyAddress(), bytes[0]) && isChar(reply.moduleAddress(), bytes[1]));
    require(isChar(reply.status(), bytes[2]) && isChar(reply.command(), bytes[3]));
    require(isBigEndian(reply.value(), bytes + 4) && isChar(reply.checksum(), bytes[8]));
    require(isCharacters(reply.versionText(), bytes + 1, 8));
    require(reply.majorVersion() == static_cast<std::int8_t>(bytes[6]));
    require(reply.minorVersion() == static_cast<std::int8_t>(bytes[7]));
    require(dump.match(reply.toByteText()).hasMatch());
    require(fields.match(reply.toFieldText()).hasMatch());
}

void decodeFrame(const std::uint8_t *bytes)
{
    static const QRegularExpression dump(u"^CANZDRLReply\\[0x\\d{3}(, 0x\\d{3}){15}\\]$"_s);
    const CANZDRLReply reply(bytes);
    require(isChar(reply.moduleId(), bytes[0]) && isChar(reply.status(), bytes[1]));
    require(isChar(reply.command(), bytes[2]) && isBigEndian(reply.value(), bytes + 3));
    require(isChar(reply.lastByte(), bytes[7]));
    require(isCharacters(reply.toText(), bytes, 8));
    require(dump.match(reply.toByteText()).hasMatch());
    require(reply.toFieldText().endsWith(u"value=%1]"_s.arg(reply.value())));
}

/// Each whole piece of @p size bytes, on the heap, where a byte too many is seen.
template <std::size_t Size, typename Decode>
void eachPiece(const std::uint8_t *data, std::size_t size, Decode decode)
{
    for (std::size_t at = 0; at + Size <= size; at += Size) {
        const std::vector<std::uint8_t> piece(data + at, data + at + Size);
        decode(piece.data());
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    eachPiece<Reply::Size>(data, size, decodeDatagram);
    eachPiece<FrameSize>(data, size, decodeFrame);
    return 0;
}
