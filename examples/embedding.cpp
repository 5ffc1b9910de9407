#include <QorWflActivityToXml.h>
#include <QorWflUrlUtil.h>

#include <iostream>

int main() {
    ActivityInfo activity;
    activity.id = "A1";
    activity.name = "Design review";
    activity.extid = QorWflUrlUtil::ActionUrl("DR-4711");
    BexUnicodeString xml;
    QorWflActivityToXml(activity, xml);
    std::cout << xml;
}
