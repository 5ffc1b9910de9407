#include "HostMessenger.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <utility>

namespace fs = std::filesystem;

namespace {

/** The one implementation: files in a folder. The workflow tool picks them up and puts its replies there. */
class FolderMessenger final : public HostMessenger {
public:
    explicit FolderMessenger(fs::path iFolder) : folder(std::move(iFolder)) { fs::create_directories(folder); }

    void Send(const BexUnicodeString& iActionId, const BexUnicodeString& iDocument) override {
        const std::string name = iActionId.ConvertToChar();
        if (name.empty() || name.find('/') != std::string::npos) {
            throw std::runtime_error("no name for a file: '" + name + "'");
        }
        // Renamed when it is whole: nobody ever sees half a document.
        const fs::path whole = folder / (name + ".xpdl");
        const fs::path part = folder / (name + ".part");
        std::ofstream file(part, std::ios::binary | std::ios::trunc);
        file.write(iDocument.ConvertToChar(), iDocument.GetLengthInChar());
        file.close();
        if (!file) {
            throw std::runtime_error("cannot write " + part.string());
        }
        fs::rename(part, whole);
    }

    std::vector<std::string> Waiting() const override {
        std::vector<std::string> names;
        for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
            if (entry.path().extension() == ".reply") {
                names.push_back(entry.path().filename().string());
            }
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    BexUnicodeString Receive(const std::string& iReply) const override {
        std::ifstream file(folder / iReply, std::ios::binary);
        std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
        if (!file) {
            throw std::runtime_error("cannot read " + iReply);
        }
        return BexUnicodeString::FromNarrow(std::move(text));
    }

    void Settle(const std::string& iReply) override { fs::rename(folder / iReply, folder / (iReply + ".done")); }

private:
    fs::path folder;
};

}  // namespace

int HostMessenger::QueryInterface(const GUID& iIid, BexBaseUnknown** oObject) {
    if (iIid == IID_QorIWflInteropMessenger && oObject != nullptr) {
        *oObject = static_cast<QorIWflInteropMessenger*>(this);
        AddRef();
        return 0;
    }
    return QorIWflInteropMessenger::QueryInterface(iIid, oObject);
}

QorIWflInteropMessenger_var OpenFolderMessenger(const std::string& iFolder) {
    BexBaseUnknown* component = new FolderMessenger(iFolder);  // born with one reference, which is ours
    QorIWflInteropMessenger_var handle(component);             // asks it for the interface and adds one of its own
    component->Release();
    return handle;
}

HostMessenger& MessengerOf(const QorIWflInteropMessenger_var& iHandle) {
    auto* messenger = dynamic_cast<HostMessenger*>(iHandle.operator->());
    if (messenger == nullptr) {
        throw std::runtime_error("no messenger of this host");
    }
    return *messenger;
}
