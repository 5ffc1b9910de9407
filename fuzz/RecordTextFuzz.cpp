#include "ActivityFields.h"
#include "FuzzRecord.h"
#include "FuzzTarget.h"
#include "NaiveRecordReader.h"
#include "PropertyCheck.h"
#include "RecordTesting.h"

#include <QorWflInteropInfo.h>

#include <sstream>
#include <string>

namespace {

using PropertyCheck::Expect;
using PropertyCheck::ExpectEqual;
using RecordTesting::ForwardOnlyBuffer;
using RecordTesting::ToText;

/** Reads from a stream into a record that holds something already. */
void CheckReading(std::istream& ioStream, const NaiveRecordReader& iNaive) {
    ActivityInfo activity;
    RecordTesting::FillSample(activity);
    ioStream >> activity;
    const std::string read = RecordContent::Of(activity).Print();
    if (read != iNaive.WithoutBrokenList().Print()) {
        ExpectEqual("the naive reader reads the same", read, iNaive.Content().Print());
    }
    if (!iNaive.EndsInsideALine()) {
        Expect(ioStream.fail() == iNaive.Failed(), "the stream has failed if something was not there");
    }
    Expect(BexUnicodeString("jones") == activity.participant && BexUnicodeString("HUMAN") == activity.participantType,
           "the participant, which is no part of the text, is left alone");
}

/** What was read has no quotes in it and is short enough, so that what is written of it comes back. */
void CheckReadBack(const std::string& iText) {
    ActivityInfo activity;
    std::istringstream(iText) >> activity;
    const std::string written = ToText(activity);
    ActivityInfo back;
    std::istringstream stream(written + "\n");
    stream >> back;
    Expect(!stream.fail(), "what was written is read without trouble");
    ExpectEqual("what was read and written reads back", RecordContent::Of(back).Print(),
                RecordContent::Of(activity).Print());
    ExpectEqual("what is written of what was read back is the same", ToText(back), written);
}

/** The parts of a record are read by themselves too. */
void CheckParts(const std::string& iText) {
    ProcessInfo process;
    std::istringstream(iText) >> process;
    DataInfo data;
    std::istringstream stream(ToText(process));
    ProcessInfo back;
    stream >> back;
    ExpectEqual("a process reads back", ToText(back), ToText(process));
    std::istringstream(iText) >> data;
    std::istringstream dataStream(ToText(data));
    DataInfo dataBack;
    dataStream >> dataBack;
    ExpectEqual("a data field reads back", ToText(dataBack), ToText(data));
}

}  // namespace

/** The bytes are the text of a record; the first one also says in what pieces a source gives it. */
int LLVMFuzzerTestOneInput(const std::uint8_t* iData, std::size_t iSize) {
    const std::string text(reinterpret_cast<const char*>(iData), iSize);
    NaiveRecordReader naive(text);
    naive.Read();
    std::istringstream stream(text);
    CheckReading(stream, naive);
    ForwardOnlyBuffer buffer(text, iSize == 0 ? 0U : iData[0] % 33U);
    std::istream pieces(&buffer);
    CheckReading(pieces, naive);
    CheckReadBack(text);
    CheckParts(text);
    return 0;
}
