#include "RequiredElements.h"

#include "Unicode.h"
#include "XpdlRoles.h"

namespace {

/** The first element of that name from a sibling on, or null. */
DOM_Node SkipTo(DOM_Node iNode, std::u16string_view iTagName) {
    while (iNode != nullptr && !(iNode.getNodeType() == DOM_Node::ELEMENT_NODE && iNode.viewNodeName() == iTagName)) {
        iNode = iNode.getNextSibling();
    }
    return iNode;
}

/** Looks below an element of a role. Goes as deep as the roles go. */
std::optional<std::string> FindMissingBelow(const DOM_Node& iElement, const Role& iRole, const std::string& iPath) {
    for (const Role& role : iRole.children) {
        const std::string path = iPath + '/' + ToUtf8(role.name);
        DOM_Node child = SkipTo(iElement.getFirstChild(), role.name);
        if (child == nullptr && role.presence == Role::Required) {
            return path;
        }
        int number = 0;
        while (child != nullptr && !role.children.empty()) {
            const std::string place = role.isEach ? path + '[' + std::to_string(++number) + ']' : path;
            if (std::optional<std::string> missing = FindMissingBelow(child, role, place)) {
                return missing;
            }
            child = role.isEach ? SkipTo(child.getNextSibling(), role.name) : DOM_Node();
        }
    }
    return std::nullopt;
}

}  // namespace

std::optional<std::string> FindMissingElement(const DOM_Document& iDocument) {
    const DOM_Element root = iDocument.getDocumentElement();
    return FindMissingBelow(root, PackageRole(), ToUtf8(root.getTagName().view()));
}
