#include "inputs/codepage.h"

#include <QHash>
#include <QStringDecoder>
#include <algorithm>

namespace vesk {

namespace {

// The upper halves of the three one-byte code pages, as the platform's tables give them. Bytes
// that Windows-1252 leaves undefined map to the control character of the same number.
const char16_t kCp850[128] = {
    0x00C7, 0x00FC, 0x00E9, 0x00E2, 0x00E4, 0x00E0, 0x00E5, 0x00E7, 0x00EA, 0x00EB, 0x00E8, 0x00EF, 0x00EE,
    0x00EC, 0x00C4, 0x00C5, 0x00C9, 0x00E6, 0x00C6, 0x00F4, 0x00F6, 0x00F2, 0x00FB, 0x00F9, 0x00FF, 0x00D6,
    0x00DC, 0x00F8, 0x00A3, 0x00D8, 0x00D7, 0x0192, 0x00E1, 0x00ED, 0x00F3, 0x00FA, 0x00F1, 0x00D1, 0x00AA,
    0x00BA, 0x00BF, 0x00AE, 0x00AC, 0x00BD, 0x00BC, 0x00A1, 0x00AB, 0x00BB, 0x2591, 0x2592, 0x2593, 0x2502,
    0x2524, 0x00C1, 0x00C2, 0x00C0, 0x00A9, 0x2563, 0x2551, 0x2557, 0x255D, 0x00A2, 0x00A5, 0x2510, 0x2514,
    0x2534, 0x252C, 0x251C, 0x2500, 0x253C, 0x00E3, 0x00C3, 0x255A, 0x2554, 0x2569, 0x2566, 0x2560, 0x2550,
    0x256C, 0x00A4, 0x00F0, 0x00D0, 0x00CA, 0x00CB, 0x00C8, 0x0131, 0x00CD, 0x00CE, 0x00CF, 0x2518, 0x250C,
    0x2588, 0x2584, 0x00A6, 0x00CC, 0x2580, 0x00D3, 0x00DF, 0x00D4, 0x00D2, 0x00F5, 0x00D5, 0x00B5, 0x00FE,
    0x00DE, 0x00DA, 0x00DB, 0x00D9, 0x00FD, 0x00DD, 0x00AF, 0x00B4, 0x00AD, 0x00B1, 0x2017, 0x00BE, 0x00B6,
    0x00A7, 0x00F7, 0x00B8, 0x00B0, 0x00A8, 0x00B7, 0x00B9, 0x00B3, 0x00B2, 0x25A0, 0x00A0,
};

const char16_t kCp437[128] = {
    0x00C7, 0x00FC, 0x00E9, 0x00E2, 0x00E4, 0x00E0, 0x00E5, 0x00E7, 0x00EA, 0x00EB, 0x00E8, 0x00EF, 0x00EE,
    0x00EC, 0x00C4, 0x00C5, 0x00C9, 0x00E6, 0x00C6, 0x00F4, 0x00F6, 0x00F2, 0x00FB, 0x00F9, 0x00FF, 0x00D6,
    0x00DC, 0x00A2, 0x00A3, 0x00A5, 0x20A7, 0x0192, 0x00E1, 0x00ED, 0x00F3, 0x00FA, 0x00F1, 0x00D1, 0x00AA,
    0x00BA, 0x00BF, 0x2310, 0x00AC, 0x00BD, 0x00BC, 0x00A1, 0x00AB, 0x00BB, 0x2591, 0x2592, 0x2593, 0x2502,
    0x2524, 0x2561, 0x2562, 0x2556, 0x2555, 0x2563, 0x2551, 0x2557, 0x255D, 0x255C, 0x255B, 0x2510, 0x2514,
    0x2534, 0x252C, 0x251C, 0x2500, 0x253C, 0x255E, 0x255F, 0x255A, 0x2554, 0x2569, 0x2566, 0x2560, 0x2550,
    0x256C, 0x2567, 0x2568, 0x2564, 0x2565, 0x2559, 0x2558, 0x2552, 0x2553, 0x256B, 0x256A, 0x2518, 0x250C,
    0x2588, 0x2584, 0x258C, 0x2590, 0x2580, 0x03B1, 0x00DF, 0x0393, 0x03C0, 0x03A3, 0x03C3, 0x00B5, 0x03C4,
    0x03A6, 0x0398, 0x03A9, 0x03B4, 0x221E, 0x03C6, 0x03B5, 0x2229, 0x2261, 0x00B1, 0x2265, 0x2264, 0x2320,
    0x2321, 0x00F7, 0x2248, 0x00B0, 0x2219, 0x00B7, 0x221A, 0x207F, 0x00B2, 0x25A0, 0x00A0,
};

const char16_t kCp1252[128] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160, 0x2039, 0x0152,
    0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, 0x02DC, 0x2122,
    0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178, 0x00A0, 0x00A1, 0x00A2, 0x00A3, 0x00A4, 0x00A5, 0x00A6,
    0x00A7, 0x00A8, 0x00A9, 0x00AA, 0x00AB, 0x00AC, 0x00AD, 0x00AE, 0x00AF, 0x00B0, 0x00B1, 0x00B2, 0x00B3,
    0x00B4, 0x00B5, 0x00B6, 0x00B7, 0x00B8, 0x00B9, 0x00BA, 0x00BB, 0x00BC, 0x00BD, 0x00BE, 0x00BF, 0x00C0,
    0x00C1, 0x00C2, 0x00C3, 0x00C4, 0x00C5, 0x00C6, 0x00C7, 0x00C8, 0x00C9, 0x00CA, 0x00CB, 0x00CC, 0x00CD,
    0x00CE, 0x00CF, 0x00D0, 0x00D1, 0x00D2, 0x00D3, 0x00D4, 0x00D5, 0x00D6, 0x00D7, 0x00D8, 0x00D9, 0x00DA,
    0x00DB, 0x00DC, 0x00DD, 0x00DE, 0x00DF, 0x00E0, 0x00E1, 0x00E2, 0x00E3, 0x00E4, 0x00E5, 0x00E6, 0x00E7,
    0x00E8, 0x00E9, 0x00EA, 0x00EB, 0x00EC, 0x00ED, 0x00EE, 0x00EF, 0x00F0, 0x00F1, 0x00F2, 0x00F3, 0x00F4,
    0x00F5, 0x00F6, 0x00F7, 0x00F8, 0x00F9, 0x00FA, 0x00FB, 0x00FC, 0x00FD, 0x00FE, 0x00FF,
};

const char16_t* upperHalf(CodePage page) {
    switch (page) {
    case CodePage::Cp850:
        return kCp850;
    case CodePage::Cp437:
        return kCp437;
    case CodePage::Cp1252:
        return kCp1252;
    default:
        return nullptr;
    }
}

const QHash<char16_t, char>& reverseTable(CodePage page) {
    static QHash<char16_t, char> tables[3];
    const int slot = page == CodePage::Cp850 ? 0 : page == CodePage::Cp437 ? 1 : 2;
    QHash<char16_t, char>& t = tables[slot];
    if (t.isEmpty()) {
        const char16_t* half = upperHalf(page);
        for (int i = 0; i < 128; ++i)
            t.insert(half[i], static_cast<char>(0x80 + i));
    }
    return t;
}

} // namespace

QString decodeBytes(const QByteArray& bytes, CodePage page) {
    if (page == CodePage::Utf8)
        return QString::fromUtf8(bytes);
    const char16_t* half = upperHalf(page);
    QString out;
    out.reserve(bytes.size());
    for (const char b : bytes) {
        const auto u = static_cast<unsigned char>(b);
        out += u < 0x80 ? QChar(u) : QChar(half[u - 0x80]);
    }
    return out;
}

bool encodable(const QString& text, CodePage page) {
    if (page == CodePage::Utf8)
        return true;
    const auto& rev = reverseTable(page);
    for (const QChar c : text)
        if (c.unicode() >= 0x80 && !rev.contains(c.unicode()))
            return false;
    return true;
}

QByteArray encodeText(const QString& text, CodePage page) {
    if (page == CodePage::Utf8)
        return text.toUtf8();
    const auto& rev = reverseTable(page);
    QByteArray out;
    out.reserve(text.size());
    for (int i = 0; i < text.size(); ++i) {
        const char16_t u = text[i].unicode();
        if (u < 0x80)
            out += static_cast<char>(u);
        else if (auto it = rev.constFind(u); it != rev.constEnd())
            out += *it;
        else {
            out += '?';
            if (text[i].isHighSurrogate() && i + 1 < text.size())
                ++i; // one question mark for the whole character
        }
    }
    return out;
}

// LMBCS, as Lotus files hold text: bytes below 0x80 are ASCII, bytes from 0x80 are of the default
// group 1 (code page 850), 0x01 announces one byte of group 1 explicitly, and 0x14 announces one
// Unicode character as two bytes, high byte first. The other bytes below 0x20 but the tab announce
// groups this reader does not know, of one byte (two for 0x10 to 0x13).
namespace {

// How many bytes after `b` belong to its character.
int lmbcsTrail(unsigned char b) {
    if (b == 0x14 || (b >= 0x10 && b <= 0x13))
        return 2;
    return b >= 0x01 && b <= 0x1F && b != 0x09 ? 1 : 0;
}

} // namespace

qsizetype lmbcsLength(const QByteArray& bytes) {
    const qsizetype n = bytes.size();
    qsizetype i = 0;
    while (i < n && bytes[i] != '\0')
        i += 1 + lmbcsTrail(static_cast<unsigned char>(bytes[i]));
    return std::min(i, n);
}

QString decodeLmbcs(const QByteArray& bytes) {
    QString out;
    const int n = static_cast<int>(bytes.size());
    for (int i = 0; i < n; ++i) {
        const auto b = static_cast<unsigned char>(bytes[i]);
        const int trail = lmbcsTrail(b);
        if (trail > 0 && i + trail >= n) {
            out += QChar(0xFFFD); // a character cut short at the end of the text
            break;
        }
        if (b == 0x14) {
            const auto hi = static_cast<unsigned char>(bytes[i + 1]);
            const auto lo = static_cast<unsigned char>(bytes[i + 2]);
            out += QChar(static_cast<char16_t>(hi << 8 | lo));
        } else if (b == 0x01) {
            out += decodeBytes(bytes.mid(i + 1, 1), CodePage::Cp850);
        } else if (trail > 0) {
            out += QChar(0xFFFD); // a group this reader does not know: one character lost, not the rest
        } else {
            out += b < 0x80 ? QChar(b) : QChar(kCp850[b - 0x80]);
        }
        i += trail;
    }
    return out;
}

QByteArray encodeLmbcs(const QString& text) {
    const auto& rev = reverseTable(CodePage::Cp850);
    QByteArray out;
    for (const QChar c : text) {
        const char16_t u = c.unicode();
        if (u < 0x80 && (u >= 0x20 || u == 0x09))
            out += static_cast<char>(u);
        else if (auto it = rev.constFind(u); it != rev.constEnd() && u >= 0x80)
            out += *it;
        else {
            out += '\x14';
            out += static_cast<char>(u >> 8);
            out += static_cast<char>(u & 0xFF);
        }
    }
    return out;
}

QString decodeGuessingUtf8(const QByteArray& bytes, CodePage fallback) {
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8(bytes);
    if (!utf8.hasError())
        return text;
    return decodeBytes(bytes, fallback);
}

} // namespace vesk
