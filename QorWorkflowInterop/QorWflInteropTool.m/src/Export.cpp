#include "Export.h"

#include "Files.h"
#include "JsonAction.h"
#include "ToolActionManager.h"

#include <QorWflActivityToXml.h>

void Export(const std::string& iActionFile, const std::optional<std::string>& iConfig) {
    const JsonAction action = ReadJsonAction(ReadInput(iActionFile), InputName(iActionFile));
    ToolActionManager manager(iConfig);
    ActivityInfo record;
    manager.FillRecord(action, record);
    BexUnicodeString document;
    QorWflActivityToXml(record, document);
    WriteOutput({document.ConvertToChar(), static_cast<std::size_t>(document.GetLengthInChar())});
}
