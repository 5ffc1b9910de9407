#include "ToolRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <TemporaryDirectory.h>
#include <string>
#include <vector>

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

constexpr const char* kAction = "LumenUID://Legacy+QOR1/default/DR+4711.ACTION";
constexpr const char* kInstance = "qor://VERANT/ENV1.PART_LIST/00000000000000A100000000000000B2";

ToolSettings Tracing(const char* iChannels) {
    return {.environment = {{"BexQorTrace", iChannels}}};
}

/** How messages that are there without the trace begin. */
bool HasMessage(const std::string& iText) {
    return iText.find("qorwfl: ") != std::string::npos;
}

}  // namespace

TEST(Trace, GoesToTheStandardErrorAndLeavesTheResultOfEveryCommandAsItIs) {
    const std::string action = Example("minimal.json");
    const std::string reply = Example("reply.xpdl");
    const std::string config = Example("QorWflActionManager");
    const struct {
        std::vector<std::string> arguments;
        const char* traced;
    } cases[] = {
        {{"export", action, "--created", "x"}, "QorWflActionManagerBase::GetActionInfo"},
        {{"export", action, "--format", "text"}, "QorWflActionManagerBase::GetActionInfo"},
        {{"export", action, "--format", "json"}, "QorWflActionManagerBase::GetActionInfo"},
        {{"import", reply}, "QorWflXmlToActivity"},
        {{"import", reply, "--format", "json"}, "QorWflXmlToActivity"},
        {{"convert", "--from", "xpdl", "--to", "json", reply}, "QorWflXmlToActivity"},
        {{"convert", "--from", "json", "--to", "xpdl", action, "--created", "x"}, "QorWflActionManagerBase"},
        {{"check", reply}, "QorWflXmlToActivity"},
        {{"check", reply, "--format", "sarif"}, "QorWflXmlToActivity"},
        {{"config", "check", config}, "QorWflActionManagerBase::InitResources"},
        {{"config", "show", "--config", config}, "QorWflActionManagerBase::InitResources"},
        {{"config", "show", "--config", config, "--format", "json"}, "QorWflActionManagerBase::InitResources"},
        {{"config", "explain", "--environment", "E", "--table", "T"}, "QorWflActionManagerBase::InitResources"},
        {{"url", "action", "DR 4711"}, "QorWflUrlUtil::ActionUrl"},
        {{"url", "instance", kInstance}, "QorWflUrlUtil::UrlToInstance"},
        {{"url", "context", "--context", "C", kInstance}, "QorWflUrlUtil::ContextUrl"},
        {{"url", "parm", kAction, "a", "b"}, "QorWflUrlUtil::AddUrlParm"},
        {{"url", "explain", kAction, kInstance}, "QorWflUrlUtil::UrlToInstance"},
        {{"url", "explain", kAction, kInstance, "--format", "json"}, "QorWflUrlUtil::UrlToInstance"},
        {{"diff", reply, reply}, "QorWflXmlToActivity"},
        {{"diff", action, reply}, "QorWflXmlToActivity"},
        {{"graph", reply}, "QorWflXmlToActivity"},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(testing::PrintToString(test.arguments));
        const ToolResult quiet = RunTool(test.arguments);
        const ToolResult traced = RunTool(test.arguments, Tracing("*"));
        EXPECT_EQ(traced.status, quiet.status);
        EXPECT_EQ(traced.out, quiet.out);
        EXPECT_THAT(quiet.err, IsEmpty());
        EXPECT_THAT(traced.err, HasSubstr(test.traced));
        EXPECT_FALSE(HasMessage(traced.err)) << traced.err;
    }
}

TEST(Trace, RecordOfTheReaderGoesToTheStandardErrorToo) {
    const ToolResult quiet = RunTool({"import", Example("reply.xpdl"), "--format", "json"});
    const ToolResult traced = RunTool({"import", Example("reply.xpdl"), "--format", "json"}, Tracing("WFInteropXML"));
    EXPECT_EQ(traced.out, quiet.out);
    EXPECT_THAT(traced.err, HasSubstr("\nprocess.datas.length=8;\n"));
}

TEST(Trace, OfSeveralInputsGoesToTheStandardErrorToo) {
    const TemporaryDirectory folder;
    const std::string action = folder.Write("a.json", "{}");
    const std::string other = folder.Write("b.json", "{}");
    const ToolResult traced =
        RunTool({"export", action, other, "-o", (folder.Path() / "out").string(), "--jobs", "2"}, Tracing("WFInterop"));
    EXPECT_EQ(traced.status, 0) << traced;
    EXPECT_THAT(traced.out, IsEmpty());
    EXPECT_THAT(traced.err, HasSubstr("QorWflActionManagerBase::GetActionInfo"));
    EXPECT_THAT(FileBytes((folder.Path() / "out/a.xpdl").string()), StartsWith("<?xml"));
}

TEST(Trace, OfUrlsThatAreExplainedStaysOnWhenItIsAskedForAndOffWhenNot) {
    const std::vector<std::string> arguments{"url", "explain", kInstance, kInstance};
    EXPECT_THAT(RunTool(arguments).err, IsEmpty());
    EXPECT_THAT(RunTool(arguments, Tracing("WFInterop")).err, IsEmpty());
    const std::string trace = RunTool(arguments, Tracing("WFInteropUrl")).err;
    const std::string start = ">> QorWflUrlUtil::UrlToInstance\n  Input url is [";
    const std::size_t first = trace.find(start);
    ASSERT_NE(first, std::string::npos) << trace;
    const std::size_t second = trace.find(start, first + 1);
    ASSERT_NE(second, std::string::npos) << trace;
    EXPECT_EQ(trace.find(start, second + 1), std::string::npos) << trace;
}
