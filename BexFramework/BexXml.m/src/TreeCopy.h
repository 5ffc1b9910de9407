#ifndef TreeCopy_H
#define TreeCopy_H

#include <xercesc/dom/DOMNode.hpp>

#include <vector>

/** @return the node behind @p iNode in document order below @p iRoot, or null behind the last one. */
inline xercesc::DOMNode* NextInTree(xercesc::DOMNode* iNode, const xercesc::DOMNode* iRoot) {
    if (iNode->getFirstChild() != nullptr) {
        return iNode->getFirstChild();
    }
    while (iNode != iRoot && iNode->getNextSibling() == nullptr) {
        iNode = iNode->getParentNode();
    }
    return iNode == iRoot ? nullptr : iNode->getNextSibling();
}

/** Whether nodes below have to be copied one by one; an attribute and an entity reference bring theirs along. */
inline bool HasNodesToCopy(const xercesc::DOMNode& iNode) {
    return iNode.getFirstChild() != nullptr && iNode.getNodeType() != xercesc::DOMNode::ATTRIBUTE_NODE &&
           iNode.getNodeType() != xercesc::DOMNode::ENTITY_REFERENCE_NODE;
}

/**
 * Copies a node, and what is below it when @p iDeep, without recursion on the depth.
 *
 * A copy is put below its parent's copy only when everything below itself is complete: Xerces-C looks at all nodes
 * above at each insertion, which from the top down would take quadratic time in a deep tree.
 *
 * @param iCopyOne gives the copy of one node with its attributes and nothing else
 */
template <typename CopyOne>
xercesc::DOMNode* CopyTree(const xercesc::DOMNode& iRoot, bool iDeep, CopyOne iCopyOne) {
    std::vector<xercesc::DOMNode*> open;  // the copies of the nodes from the root down to the one in work
    const xercesc::DOMNode* at = &iRoot;
    while (true) {
        open.push_back(iCopyOne(*at));
        if (iDeep && HasNodesToCopy(*at)) {
            at = at->getFirstChild();
            continue;
        }
        while (true) {
            xercesc::DOMNode* complete = open.back();
            open.pop_back();
            if (open.empty()) {
                return complete;
            }
            open.back()->appendChild(complete);
            if (at->getNextSibling() != nullptr) {
                at = at->getNextSibling();
                break;
            }
            at = at->getParentNode();
        }
    }
}

#endif
