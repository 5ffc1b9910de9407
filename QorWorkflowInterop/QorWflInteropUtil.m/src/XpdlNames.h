#ifndef XpdlNames_H
#define XpdlNames_H

/**
 * The fixed texts of the XPDL document, which the writer and the reader share: elements, attributes and the names of
 * extended attributes.
 */
namespace Xpdl {

constexpr const char16_t* kPackage = u"Package";
constexpr const char16_t* kPackageHeader = u"PackageHeader";
constexpr const char16_t* kXpdlVersion = u"XPDLVersion";
constexpr const char16_t* kVendor = u"Vendor";
constexpr const char16_t* kCreated = u"Created";
constexpr const char16_t* kParticipants = u"Participants";
constexpr const char16_t* kParticipant = u"Participant";
constexpr const char16_t* kParticipantType = u"ParticipantType";
constexpr const char16_t* kWorkflowProcesses = u"WorkflowProcesses";
constexpr const char16_t* kWorkflowProcess = u"WorkflowProcess";
constexpr const char16_t* kProcessHeader = u"ProcessHeader";
constexpr const char16_t* kDataFields = u"DataFields";
constexpr const char16_t* kDataField = u"DataField";
constexpr const char16_t* kDataType = u"DataType";
constexpr const char16_t* kDeclaredType = u"DeclaredType";
constexpr const char16_t* kInitialValue = u"InitialValue";
constexpr const char16_t* kExtendedAttributes = u"ExtendedAttributes";
constexpr const char16_t* kExtendedAttribute = u"ExtendedAttribute";
constexpr const char16_t* kActivities = u"Activities";
constexpr const char16_t* kActivity = u"Activity";
constexpr const char16_t* kDescription = u"Description";
constexpr const char16_t* kImplementation = u"Implementation";
constexpr const char16_t* kNo = u"No";
constexpr const char16_t* kPerformer = u"Performer";
constexpr const char16_t* kPriority = u"Priority";
constexpr const char16_t* kSimulationInformation = u"SimulationInformation";
constexpr const char16_t* kCost = u"Cost";
constexpr const char16_t* kTimeEstimation = u"TimeEstimation";
constexpr const char16_t* kDuration = u"Duration";
constexpr const char16_t* kDocumentation = u"Documentation";

constexpr const char16_t* kNamespaceDeclaration = u"xmlns:xpdl";
constexpr const char16_t* kId = u"Id";
constexpr const char16_t* kName = u"Name";
constexpr const char16_t* kType = u"Type";
constexpr const char16_t* kValue = u"Value";
constexpr const char16_t* kDurationUnit = u"DurationUnit";

constexpr const char16_t* kIn = u"IN";
constexpr const char16_t* kOut = u"OUT";
constexpr const char16_t* kStatus = u"status";
constexpr const char16_t* kExternId = u"externId";
constexpr const char16_t* kGeneration = u"generation";
constexpr const char16_t* kContext = u"context";

constexpr const char* kNamespace = "http://www.wfmc.org/2002/XPDL1.0";
constexpr const char* kPackageId = "WFRTPackageId";
constexpr const char* kPackageName = "WFRTPackageName";
constexpr const char* kVersion = "0.02";
constexpr const char* kVendorPrefix = "VERANT_";  // the protocol level stands behind it
constexpr const char* kProtocolLevel = "050803";

constexpr const char* kHumanParticipant = "HUMAN";

}  // namespace Xpdl

#endif
