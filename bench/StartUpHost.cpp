#include <BexXMLParser.h>
#include <QorWflUrlUtil.h>

/** A host of the library that does next to nothing; with an argument it starts the XML parser too. */
int main(int argc, char** /*argv*/) {
    const bool hasUrl = QorWflUrlUtil::ActionUrl("ACT-1").IsEmpty() == 0;
    return hasUrl && (argc == 1 || BexXMLParser::Initialize() == 0) ? 0 : 1;
}
