#include "BexDictionary.h"

#include <algorithm>
#include <mutex>
#include <string>
#include <vector>

namespace {

struct Entry {
    GUID iid;
    GUID classId;
    std::string name;
    std::string entry;
    BexMetaClass* metaClass;
};

/** The process-wide dictionary, in the order of entering. */
class Dictionary {
public:
    /** Built at the first use, so it outlives every load-time object that enters something. */
    static Dictionary& Instance() {
        static Dictionary instance;
        return instance;
    }

    void Add(Entry iEntry) {
        const std::lock_guard<std::mutex> guard(lock);
        entries.push_back(std::move(iEntry));
    }

    void RemoveAll(const GUID& iIid) {
        const std::lock_guard<std::mutex> guard(lock);
        entries.erase(
            std::remove_if(entries.begin(), entries.end(), [&iIid](const Entry& iEntry) { return iEntry.iid == iIid; }),
            entries.end());
    }

    template <typename Predicate>
    BexMetaClass* Find(Predicate iIsWanted) {
        const std::lock_guard<std::mutex> guard(lock);
        const auto found = std::find_if(entries.begin(), entries.end(), iIsWanted);
        return found == entries.end() ? nullptr : found->metaClass;
    }

private:
    std::mutex lock;
    std::vector<Entry> entries;
};

std::string TextOf(const char* iText) {
    return iText == nullptr ? std::string() : std::string(iText);
}

}  // namespace

void AddDictionary(const GUID& iIid, const GUID& iClassId, const char* iName, const char* iEntry, void* /*iReserved1*/,
                   BexMetaClass* iMetaClass, void* /*iReserved2*/, void* /*iReserved3*/) {
    Dictionary::Instance().Add({iIid, iClassId, TextOf(iName), TextOf(iEntry), iMetaClass});
}

BexMetaClass* FindInDictionary(const GUID& iIid) {
    return Dictionary::Instance().Find([&iIid](const Entry& iEntry) { return iEntry.iid == iIid; });
}

BexMetaClass* FindInDictionary(const char* iName) {
    if (iName == nullptr) {
        return nullptr;
    }
    return Dictionary::Instance().Find([iName](const Entry& iEntry) { return iEntry.name == iName; });
}

BexFillDictionary::BexFillDictionary(const GUID& iIid, const GUID& iClassId, BexMetaClass* iMetaClass,
                                     void* /*iReserved*/)
    : iid(iIid) {
    if (iMetaClass != nullptr) {
        AddDictionary(iIid, iClassId, iMetaClass->GetName(), nullptr, nullptr, iMetaClass, nullptr, nullptr);
    } else {
        Dictionary::Instance();  // has to outlive this object all the same
    }
}

BexFillDictionary::~BexFillDictionary() {
    Dictionary::Instance().RemoveAll(iid);
}
