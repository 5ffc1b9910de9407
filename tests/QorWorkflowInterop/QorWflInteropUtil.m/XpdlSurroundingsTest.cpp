#include "ActivityFields.h"
#include "AllocationWatch.h"
#include "LibraryTrace.h"
#include "RandomActivity.h"
#include "RecordTesting.h"
#include "XpdlReply.h"

#include <ActivityInfo.h>
#include <BexQorTrace.h>
#include <QorWflActivityToXml.h>
#include <QorWflXmlToActivity.h>
#include <WriteXML.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <CapturedStream.h>
#include <CapturedTrace.h>
#include <FreshProcess.h>
#include <RunOnThreads.h>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <vector>

// How reader, writer and serializer get on with what is around them: memory, streams, channels, threads, one another.

namespace {

using RecordTesting::LeavePrefixOfOutputs;
using RecordTesting::ToText;

/** Documents that end the reading in one way or another. */
std::vector<std::string> Documents() {
    const std::string reply = XpdlReply();
    return {reply,
            "",
            "<a>",
            "<a/>",
            reply + "<b/>",
            WithoutElement(reply, "Vendor"),
            WithoutElement(reply, "Participants"),
            WithoutElement(reply, "InitialValue", 2),
            WithoutElement(reply, "TimeEstimation")};
}

/** Takes nothing: it fails, or throws. */
class UselessBuffer : public std::streambuf {
public:
    explicit UselessBuffer(bool iThrows) : throws(iThrows) {}

protected:
    int_type overflow(int_type) override {
        if (throws) {
            throw std::runtime_error("no room");
        }
        return traits_type::eof();
    }

private:
    bool throws;
};

/** Gives a standard stream another buffer and exceptions of its own while it lives. */
class DisturbedStream {
public:
    DisturbedStream(std::ostream& ioStream, std::streambuf* iBuffer, std::ios_base::iostate iExceptions)
        : stream(ioStream), former(ioStream.rdbuf(iBuffer)) {
        stream.exceptions(iExceptions);
    }
    ~DisturbedStream() {
        stream.exceptions(std::ios_base::goodbit);
        stream.rdbuf(former);  // which clears the stream's state
    }
    DisturbedStream(const DisturbedStream&) = delete;
    DisturbedStream& operator=(const DisturbedStream&) = delete;

private:
    std::ostream& stream;
    std::streambuf* former;
};

}  // namespace

TEST(XmlToActivitySurroundings, LeavesNoMemoryBehind) {
    for (const bool traced : {false, true}) {
        for (const std::string& document : Documents()) {
            const CapturedStream errors(std::cerr);
            long before = 0;
            for (int round = 0; round < 3; ++round) {
                {
                    const BexUnicodeString text(document.c_str());
                    const CapturedStream output(std::cout);
                    ActivityInfo activity;
                    BexQorTrace::SetSink([](const char*, const char*, int, void*) {}, nullptr);
                    BexQorTrace::SetOn("WFInteropXML", traced ? 1 : 0);
                    QorWflXmlToActivity(text, activity);
                    BexQorTrace::SetOn("WFInteropXML", 0);
                    BexQorTrace::SetSink(nullptr, nullptr);
                }
                // the first round may start Xerces-C and grow what captures standard error
                const long now = AllocationWatch::LiveBlocks();
                if (round == 2) {
                    EXPECT_EQ(now, before) << document;
                }
                before = now;
            }
        }
    }
}

TEST(XmlToActivitySurroundings, TextMayBeAFieldOfTheRecord) {
    ActivityInfo activity;
    FillWithOldValues(activity);
    const std::size_t count = AllTextsOf(activity).size();
    for (std::size_t field = 0; field < count; ++field) {
        FillWithOldValues(activity);
        BexUnicodeString& text = *AllTextsOf(activity)[field];
        text = XpdlReply().c_str();
        QorWflXmlToActivity(text, activity);
        EXPECT_EQ(FieldsOf(activity), NewFields()) << field;
    }
}

TEST(XmlToActivitySurroundings, TextIsNotChanged) {
    const BexUnicodeString text(XpdlReply().c_str());
    ActivityInfo activity;
    QorWflXmlToActivity(text, activity);
    EXPECT_EQ(text, BexUnicodeString(XpdlReply().c_str()));
}

TEST(XmlToActivitySurroundings, RecordOnStandardOutputIsFlushedAtEachLineAndAtItsEnd) {
    RecordTesting::FlushRecorder buffer;
    std::streambuf* former = std::cout.rdbuf(&buffer);
    ActivityInfo activity;
    {
        const CapturedTrace trace("WFInteropXML");
        QorWflXmlToActivity(XpdlReply().c_str(), activity);
    }
    std::cout.rdbuf(former);
    const std::string text = buffer.str();
    EXPECT_EQ(text, ToText(activity) + "\n");
    std::vector<std::size_t> lineEnds;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '\n') {
            lineEnds.push_back(at + 1);
        }
    }
    EXPECT_EQ(buffer.lengthAtFlush, lineEnds);
}

TEST(XmlToActivitySurroundings, TracedRecordLeavesItsLabelPrefixAndAnUntracedOneLeavesItAlone) {
    ActivityInfo activity;
    LeavePrefixOfOutputs(7);
    QorWflXmlToActivity(XpdlReply().c_str(), activity);
    EXPECT_THAT(ToText(DataInfo()), testing::StartsWith("outputs.7.name="));
    {
        const CapturedTrace trace("WFInteropXML");
        const CapturedStream output(std::cout);
        QorWflXmlToActivity(XpdlReply().c_str(), activity);
    }
    EXPECT_THAT(ToText(DataInfo()), testing::StartsWith("outputs.1.name="));
}

TEST(XmlToActivitySurroundings, OtherChannelsDoNotTurnItsTraceOn) {
    ActivityInfo activity;
    const CapturedStream output(std::cout);
    for (const char* channel : {"WFInterop", "WFInteropUrl"}) {
        const CapturedTrace trace(channel);
        QorWflXmlToActivity(XpdlReply().c_str(), activity);
        EXPECT_THAT(trace.Lines(), testing::IsEmpty()) << channel;
    }
    EXPECT_EQ(output.Text(), "");
}

TEST(XmlToActivitySurroundings, EveryLineIsOfItsOwnChannel) {
    const CapturedStream output(std::cout);
    const LibraryTrace channels;
    ActivityInfo activity;
    QorWflXmlToActivity(XpdlReply().c_str(), activity);
    std::size_t lines = 0;
    for (std::size_t at = 0; at < channels.Text().size(); at = channels.Text().find('\n', at) + 1) {
        EXPECT_EQ(channels.Text().compare(at, 13, "WFInteropXML|"), 0) << channels.Text().substr(at);
        ++lines;
    }
    EXPECT_GT(lines, 60U);
}

TEST(XmlToActivitySurroundings, StandardStreamsThatFailOrThrowDoNotDisturbTheReading) {
    for (const bool throws : {false, true}) {
        for (const auto exceptions :
             {std::ios_base::goodbit, std::ios_base::badbit, std::ios_base::badbit | std::ios_base::failbit}) {
            const CapturedTrace trace("WFInteropXML");
            UselessBuffer buffer(throws);
            ActivityInfo activity;
            FillWithOldValues(activity);
            {
                const DisturbedStream output(std::cout, &buffer, exceptions);
                const DisturbedStream errors(std::cerr, &buffer, exceptions);
                EXPECT_NO_THROW(QorWflXmlToActivity("<a>", activity));
                EXPECT_NO_THROW(QorWflXmlToActivity(XpdlReply().c_str(), activity));
            }
            EXPECT_EQ(FieldsOf(activity), NewFields());
            EXPECT_EQ(trace.Lines().back(), "<< QorWflXmlToActivity");
        }
    }
}

TEST(XmlToActivitySurroundings, SeveralThreadsMayReadAndWrite) {
    const auto fields = ResultsOfThreads<ActivityFields>([] {
        ActivityFields read;
        for (int round = 0; round < 20; ++round) {
            ActivityInfo first;
            QorWflXmlToActivity(XpdlReply().c_str(), first);
            BexUnicodeString xml;
            QorWflActivityToXml(first, xml);
            ActivityInfo second;
            QorWflXmlToActivity(xml, second);
            read = FieldsOf(second);
        }
        return read;
    });
    for (const ActivityFields& read : fields) {
        EXPECT_EQ(read, NewFields());
    }
}

TEST(ActivityToXmlSurroundings, LeavesNoMemoryBehind) {
    long before = 0;
    for (int round = 0; round < 3; ++round) {
        {
            ActivityInfo activity;
            FillWithOldValues(activity);
            BexUnicodeString xml;
            QorWflActivityToXml(activity, xml);
        }
        const long now = AllocationWatch::LiveBlocks();
        if (round == 2) {
            EXPECT_EQ(now, before);
        }
        before = now;
    }
}

TEST(ActivityToXmlSurroundings, NeitherTracesNorPrints) {
    const CapturedStream output(std::cout);
    const CapturedStream errors(std::cerr);
    const LibraryTrace channels;
    ActivityInfo activity;
    FillWithOldValues(activity);
    BexUnicodeString xml;
    QorWflActivityToXml(activity, xml);
    std::istringstream record(ToText(activity));
    record >> activity;
    DOM_Document document = DOM_Document::createDocument();
    document.appendChild(document.createElement("r"));
    DOMString text;
    EXPECT_EQ(WriteXML(document, text), 0);
    EXPECT_EQ(channels.Text(), "");
    EXPECT_EQ(output.Text(), "");
    EXPECT_EQ(errors.Text(), "");
}

TEST(XmlFirstUseDeathTest, ReadingIsTheFirstUseOfXml) {
    EXPECT_PRINTED_IN_A_FRESH_PROCESS(
        {
            ActivityInfo activity;
            QorWflXmlToActivity(XpdlReply().c_str(), activity);
            std::cerr << activity.id.ConvertToChar();
        },
        "new id");
}

TEST(XmlFirstUseDeathTest, ReadingWhatIsNoDocumentIsTheFirstUseOfXml) {
    EXPECT_PRINTED_IN_A_FRESH_PROCESS(
        {
            ActivityInfo activity;
            QorWflXmlToActivity("<a>", activity);
        },
        "getDocument failed\n");
}

TEST(XmlFirstUseDeathTest, WritingIsTheFirstUseOfXml) {
    EXPECT_PRINTED_IN_A_FRESH_PROCESS(
        {
            BexUnicodeString xml;
            QorWflActivityToXml(ActivityInfo(), xml);
            std::cerr << xml.SubString(0, 5).ConvertToChar();
        },
        "<?xml");
}
