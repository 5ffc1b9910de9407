// A small host: fills a record, sends it out as XPDL, reads the text back as if it were a reply, and takes a URL apart.
#include <QorWflActivityToXml.h>
#include <QorWflInteropInfo.h>
#include <QorWflUrlUtil.h>
#include <QorWflXmlToActivity.h>

#include <iostream>

int main() {
    ActivityInfo sent;
    sent.id = "A1";
    sent.name = "Review";
    sent.extid = QorWflUrlUtil::ActionUrl("DR 4711");
    sent.process.SetDataNumber(1);
    sent.process.datas[0].name = "D1";
    sent.SetInputNumber(1);
    sent.inputs[0] = "D1";

    BexUnicodeString xml;
    QorWflActivityToXml(sent, xml);
    ActivityInfo received;
    QorWflXmlToActivity(xml, received);

    std::cout << received << '\n' << received.extid << '\n';
    const bool same = received.name == sent.name && received.inputNumber == 1 && received.inputs[0] == "D1" &&
                      received.process.dataNumber == 1 && QorWflUrlUtil::UrlToActionId(received.extid) == "DR 4711";
    if (!same) {
        std::cerr << "the record read back differs\n";
    }
    return same ? 0 : 1;
}
