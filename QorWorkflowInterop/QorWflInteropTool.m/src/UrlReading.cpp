#include "UrlReading.h"

#include "SafeText.h"
#include "Unicode.h"
#include "UrlText.h"

#include <QorWflUuidLayout.h>

#include <algorithm>

namespace {

using View = std::u16string_view;

constexpr View kActionSuffix = u"ACTION";
constexpr View kHexDigits = u"0123456789ABCDEFabcdef";
constexpr std::size_t kNone = View::npos;

/** A URL on its way through a reading. */
class Walk {
public:
    explicit Walk(View iUrl) : url(iUrl) {}

    View Url() const { return url; }
    View Between(std::size_t iStart, std::size_t iEnd) const {
        return iEnd > iStart ? url.substr(iStart, iEnd - iStart) : View();
    }

    /** Notes a piece as it stands. */
    void Piece(std::size_t iStart, std::size_t iEnd, const char* iName, const std::string& iMeaning = "") {
        if (iEnd > iStart) {
            reading.pieces.push_back({iStart, iEnd - iStart, iName, iMeaning});
        }
    }
    void Remark(const std::string& iText) { reading.remarks.push_back(iText); }
    void RemarkEscapes(const DecodedText& iText) {
        for (const std::size_t at : iText.BadEscapes()) {
            Remark("the escape at " + std::to_string(at) +
                   " has not two hexadecimal digits; its three characters are used up all the same");
        }
    }

    UrlReading Accept() { return reading; }
    UrlReading Refuse(const char* iCode, std::size_t iAt, const std::string& iReason) {
        reading.code = iCode;
        reading.at = iAt;
        reading.reason = iReason;
        // What was not reached is shown as one piece.
        const std::size_t shown =
            reading.pieces.empty() ? 0 : reading.pieces.back().start + reading.pieces.back().length;
        Piece(shown, url.size(), "rest");
        return reading;
    }

private:
    View url;
    UrlReading reading;
};

std::string Text(View iUnits) {
    return ToUtf8(iUnits);
}

bool IsHex(View iText) {
    return iText.find_first_not_of(kHexDigits) == kNone;
}

/** Tells of identifiers with characters that are no digits. */
void RemarkDigits(Walk& ioWalk, View iDigits, const char* iName) {
    if (!IsHex(iDigits)) {
        ioWalk.Remark(
            std::string(iName) + " " + Quoted(Text(iDigits)) +
            " has characters that are no hexadecimal digits; the library does not notice and makes bytes of them");
    }
}

// ---------------------------------------------------------------------------------------------------- actions

UrlReading ReadShortAction(Walk& ioWalk) {
    const View url = ioWalk.Url();
    const std::size_t start = kShortActionPrefix.size();
    const DecodedText id(url, start, url.size());
    ioWalk.Piece(0, start, "prefix");
    ioWalk.Piece(start, url.size(), "action identifier", Text(id.Text()));
    ioWalk.RemarkEscapes(id);
    if (url.find(u'?', start) != kNone) {
        ioWalk.Remark("a query is not taken off in this form, so it is part of the identifier");
    }
    return id.Text().empty() ? ioWalk.Refuse("no-identifier", start, "there is no identifier behind the prefix")
                             : ioWalk.Accept();
}

UrlReading ReadLongAction(Walk& ioWalk) {
    const View url = ioWalk.Url();
    const std::size_t prefix = kLongUrlPrefix.size();
    ioWalk.Piece(0, prefix, "prefix");
    const std::size_t slash = url.find(u'/', prefix);
    if (slash == kNone) {
        return ioWalk.Refuse("no-environment-end", url.size(), "there is no \"/\" behind the environment");
    }
    const std::size_t path = std::min(url.rfind(u'?'), url.size());
    const std::size_t dot = url.substr(0, path).rfind(u'.');
    ioWalk.Piece(prefix, slash, "environment", Text(url.substr(prefix, slash - prefix)));
    ioWalk.Piece(slash, slash + 1, "mark");
    if (dot == kNone) {
        return ioWalk.Refuse("no-action-suffix", path, "the path has no \".ACTION\" at its end");
    }
    if (ioWalk.Between(dot + 1, path) != kActionSuffix) {
        return ioWalk.Refuse("no-action-suffix", dot,
                             "behind the last \".\" of the path stands " + Quoted(Text(ioWalk.Between(dot + 1, path))) +
                                 ", not \"ACTION\"");
    }
    if (dot <= slash + 1) {
        return ioWalk.Refuse("no-identifier", slash + 1,
                             "there is no identifier between the environment's \"/\" and \".ACTION\"");
    }
    const DecodedText id(url, slash + 1, dot);
    ioWalk.Piece(slash + 1, dot, "action identifier", Text(id.Text()));
    ioWalk.Piece(dot, path, "suffix");
    ioWalk.RemarkEscapes(id);
    if (id.Text().empty()) {
        return ioWalk.Refuse("no-identifier", slash + 1, "nothing is left of the identifier once it is decoded");
    }
    ioWalk.Piece(path, url.size(), "query");
    return ioWalk.Accept();
}

// ---------------------------------------------------------------------------------------------------- long instances

/** A field of the instance key of a long URL: where it stands in the key, and the mark behind it. */
struct KeyField {
    const char* name;
    std::size_t start;
    std::size_t width;
    char16_t mark;
};

constexpr std::size_t Width(QorWflUuidLayout::Field iField) {
    return static_cast<std::size_t>(iField.width);
}
constexpr KeyField Behind(const KeyField& iFormer, const char* iName, std::size_t iWidth, char16_t iMark) {
    return {iName, iFormer.start + iFormer.width + 1, iWidth, iMark};
}

constexpr KeyField kDbName{"database", 0, Width(QorWflUuidLayout::kDbName), u'#'};
constexpr KeyField kKienv = Behind(kDbName, "environment in the key", Width(QorWflUuidLayout::kKienv), u'#');
constexpr KeyField kKitab = Behind(kKienv, "table", Width(QorWflUuidLayout::kKitab), u'#');
constexpr KeyField kXCoid = Behind(kKitab, "identifier", 2 * Width(QorWflUuidLayout::kXCoid), u'#');
constexpr KeyField kXCompid = Behind(kXCoid, "second identifier", 2 * Width(QorWflUuidLayout::kXCompid), u'.');
constexpr KeyField kKeyFields[] = {kDbName, kKienv, kKitab, kXCoid, kXCompid};
constexpr std::size_t kTextFields = 3;  // the first ones, padded with "+"

/** A key in the library's narrow form. */
std::u16string Narrow(View iKey) {
    std::u16string key(iKey);
    std::replace_if(
        key.begin(), key.end(), [](char16_t iUnit) { return iUnit > 0xFF; }, u'?');
    return key;
}

/** A field without its padding. */
View Unpadded(View iField) {
    return iField.substr(0, iField.find_last_not_of(u'+') + 1);
}

/** Why the marks of a key are not in their places, empty when they are. */
std::string WhyMisplaced(View iKey, std::size_t iKeyStart, std::size_t& oAt) {
    for (const KeyField& field : kKeyFields) {
        const std::size_t at = field.start + field.width;
        oAt = iKeyStart + std::min(at, iKey.size());
        const std::string place = "the mark \"" + Text(View(&field.mark, 1)) + "\" behind the " + field.name +
                                  " belongs at " + std::to_string(at) + " of the key (" +
                                  std::to_string(iKeyStart + at) + " of the URL)";
        if (at >= iKey.size()) {
            return place + ", but the key ends at " + std::to_string(iKey.size());
        }
        if (iKey[at] != field.mark) {
            return place + ", where " + Quoted(Text(iKey.substr(at, 1))) + " stands" +
                   (iKey.substr(0, at).find(u'%') != kNone ? "; an escape before it shifts the columns" : "");
        }
    }
    return "";
}

UrlReading ReadLongInstance(Walk& ioWalk) {
    const View url = ioWalk.Url();
    const std::size_t prefix = kLongUrlPrefix.size();
    ioWalk.Piece(0, prefix, "prefix");
    const std::size_t slash = url.find(u'/', prefix);
    if (slash == kNone) {
        return ioWalk.Refuse("no-environment-end", url.size(), "there is no \"/\" behind the environment");
    }
    ioWalk.Piece(prefix, slash, "environment", Text(url.substr(prefix, slash - prefix)));
    ioWalk.Piece(slash, slash + 1, "mark");
    const std::size_t start = slash + 1;
    const std::size_t end = std::min(url.rfind(u'?'), url.size());
    const std::u16string key = Narrow(ioWalk.Between(start, end));
    std::size_t wrong = 0;
    if (const std::string reason = WhyMisplaced(key, start, wrong); !reason.empty()) {
        return ioWalk.Refuse("marks-misplaced", wrong, reason);
    }
    for (std::size_t i = 0; i < std::size(kKeyFields); ++i) {
        const KeyField& field = kKeyFields[i];
        const View text = View(key).substr(field.start, field.width);
        const std::size_t at = start + field.start;
        ioWalk.Piece(at, at + field.width, field.name, Text(i < kTextFields ? Unpadded(text) : text));
        ioWalk.Piece(at + field.width, at + field.width + 1, "mark");
        if (i >= kTextFields) {
            RemarkDigits(ioWalk, text, field.name);
        } else if (Unpadded(text).find_first_of(u"+%") != kNone) {
            ioWalk.Remark(std::string("the ") + field.name + ' ' + Quoted(Text(Unpadded(text))) +
                          " is not decoded; it is taken as it stands");
        }
    }
    const View environment = Unpadded(View(key).substr(kKienv.start, kKienv.width));
    if (url.substr(prefix, slash - prefix) != environment) {
        return ioWalk.Refuse("environment-differs", prefix,
                             "the environment in front, " + Quoted(Text(url.substr(prefix, slash - prefix))) +
                                 ", is not that of the key, " + Quoted(Text(environment)));
    }
    const std::size_t tail = start + kXCompid.start + kXCompid.width + 1;
    const View table = Unpadded(View(key).substr(kKitab.start, kKitab.width));
    ioWalk.Piece(tail, end, "table once more", Text(url.substr(tail, end - tail)));
    if (ioWalk.Between(tail, end) != table) {
        ioWalk.Remark("the table at the end differs from that of the key; it is not looked at");
    }
    ioWalk.Piece(end, url.size(), "query");
    return ioWalk.Accept();
}

// ---------------------------------------------------------------------------------------------------- short instances

/** The decoded body of a short URL, from which fields are taken one by one. */
class Body {
public:
    Body(Walk& ioWalk, std::size_t iStart, std::size_t iEnd)
        : walk(ioWalk), decoded(ioWalk.Url(), iStart, iEnd), narrow(Narrow(decoded.Text())) {}

    View Text() const { return narrow; }
    const DecodedText& Decoded() const { return decoded; }
    std::size_t Next() const { return next; }
    std::size_t Left() const { return narrow.size() - next; }
    /** @return where in the URL the next field begins. */
    std::size_t Place() const { return decoded.PlaceOf(next); }

    /** Takes the field up to a mark; false when the mark is missing. */
    bool Take(const char* iName, char16_t iMark, std::size_t iWidth) {
        const std::size_t mark = narrow.find(iMark, next);
        if (mark == kNone) {
            return false;
        }
        const std::string text = ToUtf8(View(narrow).substr(next, mark - next));
        if (mark - next > iWidth) {
            walk.Remark(std::string("the ") + iName + ' ' + Quoted(text) + " is cut to " + std::to_string(iWidth) +
                        " characters");
        }
        walk.Piece(Place(), decoded.PlaceOf(mark), iName, text);
        walk.Piece(decoded.PlaceOf(mark), decoded.PlaceOf(mark + 1), "mark");
        next = mark + 1;
        return true;
    }
    /** Takes an identifier. */
    void TakeDigits(const char* iName, std::size_t iCount) {
        const View digits = View(narrow).substr(next, iCount);
        walk.Piece(Place(), decoded.PlaceOf(next + iCount), iName, ToUtf8(digits));
        RemarkDigits(walk, digits, iName);
        next += iCount;
    }

private:
    Walk& walk;
    DecodedText decoded;
    std::u16string narrow;
    std::size_t next = 0;
};

UrlReading ReadShortInstance(Walk& ioWalk) {
    const View url = ioWalk.Url();
    const std::size_t start = kShortUrlPrefix.size();
    const std::size_t end = std::min(url.find(u'?', start), url.size());
    ioWalk.Piece(0, start, "prefix");
    Body body(ioWalk, start, end);
    ioWalk.RemarkEscapes(body.Decoded());
    if (body.Text().starts_with(u'/')) {
        return ioWalk.Refuse("no-database", body.Place(), "the database in front of the first \"/\" is empty");
    }
    if (!body.Take("database", u'/', Width(QorWflUuidLayout::kDbName))) {
        return ioWalk.Refuse("no-database", end, "there is no \"/\" behind the database");
    }
    if (!body.Take("environment", u'.', Width(QorWflUuidLayout::kKienv))) {
        return ioWalk.Refuse("no-environment", end, "there is no \".\" behind the environment");
    }
    if (!body.Take("table", u'/', Width(QorWflUuidLayout::kKitab))) {
        return ioWalk.Refuse("no-table", end, "there is no \"/\" behind the table");
    }
    if (body.Left() != kXCoid.width + kXCompid.width) {
        return ioWalk.Refuse("digits-count", body.Place(),
                             "behind the table there must be exactly " + std::to_string(kXCoid.width + kXCompid.width) +
                                 " hexadecimal digits; there are " + std::to_string(body.Left()) + " characters");
    }
    body.TakeDigits("identifier", kXCoid.width);
    body.TakeDigits("second identifier", kXCompid.width);
    ioWalk.Piece(end, url.size(), "query");
    return ioWalk.Accept();
}

}  // namespace

UrlReading ReadAsAction(View iUrl) {
    Walk walk(iUrl);
    if (iUrl.starts_with(kShortActionPrefix)) {
        return ReadShortAction(walk);
    }
    if (iUrl.starts_with(kLongUrlPrefix)) {
        return ReadLongAction(walk);
    }
    return walk.Refuse("no-prefix", 0, "it begins neither with \"qor://ACTION/\" nor with \"LumenUID://Legacy+QOR1/\"");
}

UrlReading ReadAsInstance(View iUrl) {
    Walk walk(iUrl);
    if (iUrl.starts_with(kLongUrlPrefix)) {
        return ReadLongInstance(walk);
    }
    if (iUrl.starts_with(kShortUrlPrefix)) {
        return ReadShortInstance(walk);
    }
    return walk.Refuse("no-prefix", 0, "it begins neither with \"LumenUID://Legacy+QOR1/\" nor with \"qor://\"");
}
