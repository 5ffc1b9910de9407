#include "HostileDocument.h"
#include "OutsideWorld.h"

#include <BexDom.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <CapturedStream.h>
#include <TemporaryDirectory.h>
#include <XmlText.h>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <netdb.h>
#include <string>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/** Everything that a document can name which a parser might go and fetch: of a file that is there, and of the network.
 */
std::vector<std::string> NamesOutside(const std::string& iFile) {
    return {iFile,
            "file://" + iFile,
            "file://localhost" + iFile,
            "file:///etc/passwd",
            "/etc/passwd",
            "../../../../../../../../etc/passwd",
            "http://127.0.0.1:9/x.dtd",
            "http://host.invalid/x.dtd",
            "https://host.invalid/x.dtd",
            "ftp://host.invalid/x.dtd",
            "//host.invalid/share/x.dtd",
            "jar:file:///x.jar!/x",
            "data:text/plain,x",
            "expect://id",
            "urn:x:y",
            "/dev/tty",
            "/dev/stdin",
            "/dev/zero"};
}

/** A document around a place for a name. */
struct Shape {
    std::string start;
    std::string end;
    bool isRead;  ///< whether it is a document after all
};

const std::vector<Shape>& Shapes() {
    static const std::vector<Shape> shapes = {
        {"<!DOCTYPE a SYSTEM '", "'><a/>", true},
        {"<!DOCTYPE a PUBLIC '-//x//y' '", "'><a/>", true},
        {"<!DOCTYPE a PUBLIC \"-//x//y\" \"", "\"><a>&e;</a>", false},
        {"<!DOCTYPE a SYSTEM '", "' []><a/>", false},
        {"<!DOCTYPE a [<!ENTITY e SYSTEM '", "'>]><a>&e;</a>", false},
        {"<!DOCTYPE a [<!ENTITY e PUBLIC 'p' '", "'>]><a>&e;</a>", false},
        {"<!DOCTYPE a [<!ENTITY % e SYSTEM '", "'> %e;]><a/>", false},
        {"<!DOCTYPE a [<!ENTITY e SYSTEM '", "' NDATA n>]><a b='e'/>", false},
        {"<!DOCTYPE a [<!NOTATION n SYSTEM '", "'>]><a/>", false},
        {"<a xmlns:xi='http://www.w3.org/2001/XInclude'><xi:include href='", "'/></a>", true},
        {"<a xmlns:x='http://www.w3.org/2001/XMLSchema-instance' x:noNamespaceSchemaLocation='", "'/>", true},
        {"<a xmlns:x='http://www.w3.org/2001/XMLSchema-instance' xmlns='urn:a' x:schemaLocation='urn:a ", "'/>", true},
        {"<?xml-stylesheet type='text/xsl' href='", "'?><a/>", true},
        {"<?xml-model href='", "'?><a/>", true},
        {"<a xml:base='", "'/>", true},
        {"<a xmlns='", "'/>", true},
    };
    return shapes;
}

TEST(OutsideWorld, WhatIsAskedOfItIsSeen) {
    const TemporaryDirectory directory;
    const std::string file = directory.Write("there", "x");
    const OutsideWorld world;
    ::close(::open(file.c_str(), O_RDONLY));
    std::ifstream stream(file);
    if (FILE* opened = std::fopen(file.c_str(), "r")) {
        std::fclose(opened);
    }
    std::filesystem::directory_iterator entries(directory.Path());
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    const sockaddr address{};
    EXPECT_NE(::connect(socket, &address, sizeof address), 0);
    ::close(socket);
    addrinfo* found = nullptr;
    addrinfo hints{};
    hints.ai_flags = AI_NUMERICHOST;
    if (::getaddrinfo("127.0.0.1", nullptr, &hints, &found) == 0) {
        ::freeaddrinfo(found);
    }
    EXPECT_THAT(world.Calls(), Contains(HasSubstr("open " + file)));
    EXPECT_THAT(world.Calls(), Contains("socket "));
    EXPECT_THAT(world.Calls(), Contains("connect "));
    EXPECT_THAT(world.Calls(), Contains("getaddrinfo 127.0.0.1"));
}

TEST(OutsideWorld, NothingThatADocumentNamesIsAskedForByTheParser) {
    const TemporaryDirectory directory;
    const std::string file = directory.Write("x.dtd", "<!ENTITY e 'from the file'>");
    Parsed("<first-use/>");
    for (const Shape& shape : Shapes()) {
        for (const std::string& name : NamesOutside(file)) {
            const std::string text = shape.start + name + shape.end;
            const OutsideWorld world;
            const bool isRead = !Parsed(text).isNull();
            EXPECT_THAT(world.Calls(), IsEmpty()) << text;
            EXPECT_EQ(isRead, shape.isRead) << text;
        }
    }
}

TEST(OutsideWorld, NothingThatADocumentNamesIsAskedForByTheReader) {
    const TemporaryDirectory directory;
    const std::string file = directory.Write("x.dtd", "<!ENTITY e 'from the file'>");
    const std::string reply = HostileDocument::FileText(HostileDocument::Names().front());
    const std::size_t root = reply.find("<Package");
    ASSERT_NE(root, std::string::npos);
    const ActivityFields fields = HostileDocument::Read(reply);
    for (const std::string& name : NamesOutside(file)) {
        const std::string types[] = {"<!DOCTYPE Package SYSTEM '" + name + "'>",
                                     "<!DOCTYPE Package [<!ENTITY e SYSTEM '" + name + "'>]>"};
        for (const std::string& type : types) {
            const CapturedStream errors(std::cerr);
            std::string text = reply;
            text.insert(root, type);
            const OutsideWorld world;
            const ActivityFields read = HostileDocument::Read(text);
            EXPECT_THAT(world.Calls(), IsEmpty()) << type;
            EXPECT_EQ(read, &type == &types[0] ? fields : OldFields()) << type;
        }
    }
}

TEST(OutsideWorld, NothingIsAskedForWithoutANameInTheDocument) {
    const std::string reply = HostileDocument::FileText(HostileDocument::Names().front());
    HostileDocument::Read(reply);
    const OutsideWorld world;
    HostileDocument::Read(reply);
    EXPECT_THAT(world.Calls(), IsEmpty());
}

}  // namespace
