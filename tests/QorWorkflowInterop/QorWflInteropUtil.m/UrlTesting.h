#ifndef UrlTesting_H
#define UrlTesting_H

#include "NaiveUrl.h"

#include <BexUnicodeString.h>
#include <QorWflUrlUtil.h>
#include <QorWflUuidLayout.h>

#include <cstddef>
#include <cstring>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/** What the tests of the URLs share: byte strings for texts and blocks, and all texts over an alphabet. */
namespace UrlTesting {

inline BexUnicodeString Text(const std::string& iBytes) {
    return BexUnicodeString(iBytes.data(), static_cast<int>(iBytes.size()));
}

inline std::string Bytes(const BexUnicodeString& iText) {
    return std::string(iText.ConvertToChar(), static_cast<std::size_t>(iText.GetLengthInChar()));
}

using OwnedUuid = std::unique_ptr<char, QorWflUuidDeleter>;

/** The bytes of a block that is let go of, nothing for null. */
inline std::optional<std::string> BytesOf(const OwnedUuid& iUuid) {
    return iUuid ? std::optional(std::string(iUuid.get(), QorWflUuidLayout::kBlockSize)) : std::nullopt;
}

inline std::optional<std::string> UrlToUuid(const std::string& iUrl) {
    return BytesOf(OwnedUuid(QorWflUrlUtil::UrlToUuid(Text(iUrl))));
}

inline std::string UrlToActionId(const std::string& iUrl) {
    return Bytes(QorWflUrlUtil::UrlToActionId(Text(iUrl)));
}

inline std::string ActionUrl(const std::string& iId) {
    return Bytes(QorWflUrlUtil::ActionUrl(Text(iId)));
}

inline std::string GetUrlParm(const std::string& iUrl, const std::string& iName) {
    return Bytes(QorWflUrlUtil::GetUrlParm(Text(iUrl), Text(iName)));
}

/** The block goes over in a heap block of exactly its size, so that a checker sees one byte read too far. */
inline std::string InstanceUrl(const std::string& iBlock) {
    const std::unique_ptr<char[]> exact(new char[iBlock.size()]);
    std::memcpy(exact.get(), iBlock.data(), iBlock.size());
    return Bytes(QorWflUrlUtil::InstanceUrl(exact.get()));
}

/** A block of padded texts and of hexadecimal digits. */
inline std::string Block(const std::string& iDbName, const std::string& iKienv, const std::string& iKitab,
                         const std::string& iXCoid = "0123456789ABCDEF",
                         const std::string& iXCompid = "FEDCBA9876543210") {
    return NaiveUrl::Block(iDbName, iKienv, iKitab, iXCoid, iXCompid);
}

/** Calls @p iVisit with every text of up to @p iLength pieces, the empty one first. */
inline void ForEachText(const std::vector<std::string>& iPieces, int iLength,
                        const std::function<void(const std::string&)>& iVisit) {
    std::vector<std::string> shorter{""};
    iVisit("");
    for (int length = 1; length <= iLength; ++length) {
        std::vector<std::string> longer;
        longer.reserve(shorter.size() * iPieces.size());
        for (const std::string& text : shorter) {
            for (const std::string& piece : iPieces) {
                longer.push_back(text + piece);
                iVisit(longer.back());
            }
        }
        shorter = std::move(longer);
    }
}

}  // namespace UrlTesting

#endif
