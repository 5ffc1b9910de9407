#ifndef FuzzBytes_H
#define FuzzBytes_H

#include <BexUnicodeString.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/**
 * Takes values off the bytes that a fuzz target is given. Behind their end every number is 0 and every text empty.
 *
 * A text lasts up to a backslash that another character than a backslash follows, so that bytes put in or taken out
 * change one text and leave those behind it as they were.
 */
class FuzzBytes {
public:
    FuzzBytes(const std::uint8_t* iData, std::size_t iSize) : rest(reinterpret_cast<const char*>(iData), iSize) {}
    FuzzBytes(const FuzzBytes&) = delete;  // a view of its own text
    FuzzBytes& operator=(const FuzzBytes&) = delete;

    bool IsEmpty() const { return rest.empty(); }

    unsigned Byte() {
        if (rest.empty()) {
            return 0;
        }
        const auto byte = static_cast<unsigned char>(rest.front());
        rest.remove_prefix(1);
        return byte;
    }

    /** A number from 0 to @p iLimit - 1, of one byte. */
    unsigned Below(unsigned iLimit) { return Byte() % iLimit; }

    /** Any number; the first byte chooses how many more it has, so that small ones are as likely as others. */
    long Number() {
        const unsigned length = Below(9);
        std::uint64_t number = 0;
        for (unsigned i = 0; i < length; ++i) {
            number = number << 8U | Byte();
        }
        return static_cast<long>(length % 2 == 0 ? number : ~number);
    }

    /** A text, see above. */
    std::string Text() {
        std::string text;
        while (!rest.empty()) {
            const char character = rest.front();
            rest.remove_prefix(1);
            if (character == '\\') {
                if (rest.empty() || rest.front() != '\\') {
                    rest.remove_prefix(rest.empty() ? 0 : 1);
                    break;
                }
                rest.remove_prefix(1);
            }
            text += character;
        }
        return text;
    }

    /** A null string, an empty one, narrow text, or text with characters that have no narrow form. */
    BexUnicodeString AnyString() {
        switch (Below(4)) {
            case 0:
                return BexUnicodeString();
            case 1:
                return BexUnicodeString("");
            case 2:
                return BexUnicodeString::FromNarrow(Text());
            default: {
                const std::u16string text = WideText();
                return BexUnicodeString(text.data(), static_cast<int>(text.size()));
            }
        }
    }

    /** UTF-16 text: '~' stands for 256 times the code of the character behind it, plus that of the next. */
    std::u16string WideText() {
        FuzzBytes bytes(Text());
        std::u16string text;
        while (!bytes.IsEmpty()) {
            const unsigned byte = bytes.Byte();
            const unsigned high = byte == '~' ? bytes.Byte() : 0;
            text += static_cast<char16_t>(byte == '~' ? high << 8U | bytes.Byte() : byte);
        }
        return text;
    }

private:
    explicit FuzzBytes(const std::string& iText) : kept(iText), rest(kept) {}

    std::string kept;
    std::string_view rest;
};

#endif
