#include "RequiredElements.h"

#include "Unicode.h"

#include <utility>

namespace {

/** Thrown at the first missing element; the walk goes no further, as the reader does not. */
struct MissingElement {
    std::string path;
};

/** An element and how it is reached. */
struct Place {
    DOM_Node node;
    std::string path;
};

/** The first element of that name from a sibling on, or null. */
DOM_Node SkipTo(DOM_Node iNode, const DOMString& iTagName) {
    while (iNode != nullptr && !(iNode.getNodeType() == DOM_Node::ELEMENT_NODE && iNode.getNodeName() == iTagName)) {
        iNode = iNode.getNextSibling();
    }
    return iNode;
}

/** The first child element of that name; its node is null when there is none. */
Place Child(const Place& iParent, const char* iTagName) {
    return {SkipTo(iParent.node.getFirstChild(), iTagName), iParent.path + '/' + iTagName};
}

Place Required(const Place& iParent, const char* iTagName) {
    Place child = Child(iParent, iTagName);
    if (child.node == nullptr) {
        throw MissingElement{std::move(child.path)};
    }
    return child;
}

void CheckParticipants(const Place& iPackage) {
    const Place participants = Child(iPackage, "Participants");
    if (participants.node != nullptr) {
        Required(Required(participants, "Participant"), "ParticipantType");
    }
}

void CheckDataFields(const Place& iProcess) {
    const Place fields = Required(iProcess, "DataFields");
    const DOMString tagName("DataField");
    int number = 0;
    for (DOM_Node node = SkipTo(fields.node.getFirstChild(), tagName); node != nullptr;
         node = SkipTo(node.getNextSibling(), tagName)) {
        const Place field{node, fields.path + "/DataField[" + std::to_string(++number) + ']'};
        Required(Required(field, "DataType"), "DeclaredType");
        Required(field, "InitialValue");
        Required(field, "ExtendedAttributes");
    }
}

void CheckActivity(const Place& iProcess) {
    const Place activity = Required(Required(iProcess, "Activities"), "Activity");
    const Place simulation = Child(activity, "SimulationInformation");
    if (simulation.node != nullptr) {
        Required(simulation, "TimeEstimation");
    }
    Required(activity, "ExtendedAttributes");
}

void CheckPackage(const Place& iPackage) {
    Required(Required(iPackage, "PackageHeader"), "Vendor");
    CheckParticipants(iPackage);
    const Place process = Required(Required(iPackage, "WorkflowProcesses"), "WorkflowProcess");
    Required(process, "ProcessHeader");
    CheckDataFields(process);
    CheckActivity(process);
}

}  // namespace

std::optional<std::string> FindMissingElement(const DOM_Document& iDocument) {
    const DOM_Element root = iDocument.getDocumentElement();
    try {
        CheckPackage({root, ToUtf8(root.getTagName().view())});
        return std::nullopt;
    } catch (const MissingElement& missing) {
        return missing.path;
    }
}
