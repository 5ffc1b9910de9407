// A small PDM server: its actions are rows of an SQLite database, its messenger is a folder. See README.md.
#include "Exchange.h"
#include "HostActionManager.h"
#include "HostLog.h"
#include "HostMessenger.h"
#include "Store.h"

#include <exception>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

const char* const kUsage =
    "usage: host create STORE SCRIPT            make a store with an SQL script\n"
    "       host export STORE FOLDER LOG [-t]   write the documents of all open actions\n"
    "       host import STORE FOLDER LOG [-t]   take in the replies that wait\n"
    "-t has the library's trace in the log. The property file is looked for along BexMsgCatalogPath.\n";

std::string ReadFile(const std::string& iFile) {
    std::ifstream file(iFile, std::ios::binary);
    const std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    if (!file) {
        throw std::runtime_error("cannot read " + iFile);
    }
    return text;
}

int Run(const std::vector<std::string>& iArguments) {
    const std::string command = iArguments.empty() ? "" : iArguments[0];
    if (command == "create" && iArguments.size() == 3) {
        Store::Create(iArguments[1], ReadFile(iArguments[2]));
        return 0;
    }
    const bool trace = iArguments.size() == 5 && iArguments[4] == "-t";
    if ((command != "export" && command != "import") || (iArguments.size() != 4 && !trace)) {
        std::cerr << kUsage;
        return 2;
    }
    HostLog log(iArguments[3], trace);
    Store store(iArguments[1]);
    HostActionManager manager(store);
    const QorIWflInteropMessenger_var messenger = OpenFolderMessenger(iArguments[2]);
    const Outcome outcome = command == "export" ? ExportOpenActions(store, manager, MessengerOf(messenger), log)
                                                : ImportReplies(store, manager, MessengerOf(messenger), log);
    std::cout << command << ": " << outcome.done << " done, " << outcome.failed << " failed\n";
    return outcome.failed == 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return Run(std::vector<std::string>(argv + 1, argv + argc));
    } catch (const std::exception& error) {
        std::cerr << "host: " << error.what() << '\n';
        return 1;
    }
}
