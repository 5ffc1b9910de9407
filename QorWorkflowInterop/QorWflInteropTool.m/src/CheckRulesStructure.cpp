#include "CheckRules.h"
#include "NearNames.h"
#include "SafeText.h"

#include <XpdlNames.h>
#include <algorithm>
#include <unordered_set>

namespace {

std::string Joined(const std::vector<std::string>& iNames) {
    std::string text;
    for (const std::string& name : iNames) {
        text += (text.empty() ? "" : ", ") + name;
    }
    return text;
}

/** The first child of an element that is nearly called like that, or kNone. */
std::size_t FindNearly(const PositionedDocument& iDocument, std::size_t iParent, std::u16string_view iName) {
    std::size_t child = iDocument[iParent].firstChild;
    while (child != kNone && !IsNearly(iDocument[child].name, iName)) {
        child = iDocument[child].nextSibling;
    }
    return child;
}

void FindDocumentType(Inspection& ioInspection) {
    const TextPlace place = ioInspection.document.DocumentType();
    if (place.line != 0) {
        ioInspection.Report(Code::DocumentTypePassed, place, kNone, [] {
            return Explanation{"the document type is read past; nothing that it names is loaded",
                               "make sure that the document does not count on default values"};
        });
    }
}

void FindRootName(Inspection& ioInspection) {
    const PositionedElement& root = ioInspection.document[0];
    if (root.name != Xpdl::kPackage) {
        ioInspection.Report(Code::RootName, root.place, std::size_t{0}, [&root] {
            return Explanation{"the root is called " + SafeName(root.name) + ", not Package; it is read as the package",
                               "see whether this is an XPDL document"};
        });
    }
}

void FindMissingElements(Inspection& ioInspection) {
    const XpdlReading& reading = ioInspection.reading;
    for (const MissingElement& missing : reading.Missing()) {
        const std::u16string_view name = missing.role->name;
        const bool isFirst = &missing == &reading.Missing().front();
        const auto explain = [&reading, name, isFirst] {
            const std::string subject = "required element " + SafeName(name) + " is missing";
            return Explanation{isFirst ? subject + "; the reading stops here, and these fields stay as they were: " +
                                             Joined(reading.KeptFields())
                                       : subject + " as well; the reading would stop here next",
                               "add the element; it may be empty"};
        };
        ioInspection.Report(Code::RequiredMissing, ioInspection.document[missing.parent].place, missing.parent, explain,
                            name);
        const std::size_t nearly = FindNearly(ioInspection.document, missing.parent, name);
        if (nearly != kNone) {
            const PositionedElement& element = ioInspection.document[nearly];
            ioInspection.Report(Code::RequiredUnderOtherName, element.place, nearly, [&element, name] {
                return Explanation{SafeName(element.name) + " is not found as " + SafeName(name) + ": its name " +
                                       Difference(element.name),
                                   "write <" + SafeName(name) + ">, here and in all elements"};
            });
        }
    }
}

/** The first role of a list that an element would have but for its name; null when there is none. */
const Role* FindNearRole(const std::vector<Role>& iRoles, std::u16string_view iName) {
    const auto role =
        std::find_if(iRoles.begin(), iRoles.end(), [iName](const Role& iRole) { return IsNearly(iName, iRole.name); });
    return role == iRoles.end() ? nullptr : &*role;
}

/** Reports an element of a name that the reader looks for, behind the one that it takes. */
void ReportRepeated(Inspection& ioInspection, const Role& iRole, std::size_t iElement) {
    const PositionedElement& element = ioInspection.document[iElement];
    ioInspection.Report(iRole.whenRepeated, element.place, iElement, [&] {
        const std::size_t first = ioInspection.document.FindChild(element.parent, element.name);
        return Explanation{"this " + SafeName(element.name) + " is ignored; the first one, in line " +
                               std::to_string(ioInspection.document[first].place.line) + ", is read",
                           iRole.whenRepeated == Code::RepeatedElementIgnored
                               ? "join the two or take one out"
                               : "send it in a document of its own, or put it first"};
    });
}

void ReportIgnored(Inspection& ioInspection, std::size_t iElement) {
    const PositionedElement& element = ioInspection.document[iElement];
    ioInspection.Report(Code::ElementIgnored, element.place, iElement, [&element] {
        std::string message = "element " + SafeName(element.name) + " is ignored";
        if (element.elementsBelow > 0) {
            message += ", with the " + std::to_string(element.elementsBelow) +
                       (element.elementsBelow == 1 ? " element in it" : " elements in it");
        }
        return Explanation{message, "nothing to do unless something of it is wanted in the record"};
    });
}

/** Reports an element that the reader would look for but for its name. */
void ReportNearElement(Inspection& ioInspection, const Role& iRole, std::size_t iElement) {
    const PositionedElement& element = ioInspection.document[iElement];
    ioInspection.Report(Code::NameNotQuite, element.place, iElement, [&] {
        return Explanation{"element " + SafeName(element.name) + " is ignored: its name " + Difference(element.name),
                           "write <" + SafeName(iRole.name) + ">"};
    });
}

/** Goes through the children of an element that the reader takes, for those that it does not take. */
void FindIgnoredChildren(Inspection& ioInspection, std::size_t iParent, const Role& iRole,
                         const std::unordered_set<std::size_t>& iReported) {
    const XpdlReading& reading = ioInspection.reading;
    const PositionedDocument& document = ioInspection.document;
    for (std::size_t child = document[iParent].firstChild; child != kNone; child = document[child].nextSibling) {
        if (reading.RoleOf(child) != nullptr) {
            continue;
        }
        const std::u16string_view name = document[child].name;
        const auto same = std::find_if(iRole.children.begin(), iRole.children.end(),
                                       [name](const Role& iChild) { return iChild.name == name; });
        if (same != iRole.children.end()) {
            ReportRepeated(ioInspection, *same, child);
        } else if (const Role* nearly = FindNearRole(iRole.children, name)) {
            if (iReported.count(child) == 0) {
                ReportNearElement(ioInspection, *nearly, child);
            }
        } else {
            ReportIgnored(ioInspection, child);
        }
    }
}

void FindIgnoredElements(Inspection& ioInspection) {
    std::unordered_set<std::size_t> reported;  // as what would be there for a missing element
    for (const MissingElement& missing : ioInspection.reading.Missing()) {
        reported.insert(FindNearly(ioInspection.document, missing.parent, missing.role->name));
    }
    for (const std::size_t element : ioInspection.reading.Taken()) {
        FindIgnoredChildren(ioInspection, element, *ioInspection.reading.RoleOf(element), reported);
    }
}

bool DeclaresNamespace(std::u16string_view iName) {
    return iName == u"xmlns" || iName.substr(0, 6) == u"xmlns:" || iName.substr(0, 4) == u"xml:";
}

/** All names of attributes that the reader looks for in an element of a role. */
std::vector<std::u16string_view> AttributesOf(const Role& iRole) {
    std::vector<std::u16string_view> names;
    for (const RoleAttribute& attribute : iRole.attributes) {
        names.push_back(attribute.name);
    }
    for (const Role& child : iRole.children) {
        for (const RoleAttribute& attribute : child.attributesAbove) {
            names.push_back(attribute.name);
        }
    }
    return names;
}

void FindIgnoredAttributes(Inspection& ioInspection) {
    const PositionedDocument& document = ioInspection.document;
    for (const std::size_t index : ioInspection.reading.Taken()) {
        const PositionedElement& element = document[index];
        const std::vector<std::u16string_view> known = AttributesOf(*ioInspection.reading.RoleOf(index));
        for (std::size_t i = element.firstAttribute; i < element.firstAttribute + element.attributeCount; ++i) {
            const PositionedAttribute& attribute = document.Attribute(i);
            if (DeclaresNamespace(attribute.name) ||
                std::find(known.begin(), known.end(), attribute.name) != known.end()) {
                continue;
            }
            const auto nearly = std::find_if(known.begin(), known.end(), [&attribute](std::u16string_view iName) {
                return IsNearly(attribute.name, iName);
            });
            const bool isNear = nearly != known.end();
            ioInspection.Report(isNear ? Code::NameNotQuite : Code::AttributeIgnored, attribute.place, index, [&] {
                const std::string subject = "attribute " + SafeName(attribute.name) + " is ignored";
                return isNear ? Explanation{subject + ": its name " + Difference(attribute.name),
                                            "write " + SafeName(*nearly)}
                              : Explanation{subject, "nothing to do unless its value is wanted in the record"};
            });
        }
    }
}

bool IsBlank(std::string_view iText) {
    return iText.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

void FindIgnoredTexts(Inspection& ioInspection) {
    const PositionedDocument& document = ioInspection.document;
    for (const std::size_t index : ioInspection.reading.Taken()) {
        if (ioInspection.reading.RoleOf(index)->hasText) {
            continue;
        }
        for (std::size_t i = document[index].firstContent; i != kNone; i = document.Content(i).next) {
            const ContentMark& content = document.Content(i);
            const bool isText = content.kind == ContentMark::Text || content.kind == ContentMark::CDataSection;
            if (isText && !IsBlank(content.raw)) {
                ioInspection.Report(Code::TextIgnored, content.place, index, [&document, index] {
                    return Explanation{"text in " + SafeName(document[index].name) + " is ignored",
                                       "put it where a text is read"};
                });
            }
        }
    }
}

constexpr Rule kRules[] = {FindDocumentType,    FindRootName,          FindMissingElements,
                           FindIgnoredElements, FindIgnoredAttributes, FindIgnoredTexts};

}  // namespace

std::span<const Rule> StructureRules() {
    return kRules;
}
