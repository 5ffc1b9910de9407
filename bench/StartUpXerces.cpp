#include <xercesc/util/PlatformUtils.hpp>

/** A program that needs Xerces-C and nothing of ours; with an argument it starts it. */
int main(int argc, char** /*argv*/) {
    if (argc > 1) {
        xercesc::XMLPlatformUtils::Initialize();
    }
    return 0;
}
