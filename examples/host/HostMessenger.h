#ifndef HostMessenger_H
#define HostMessenger_H

#include <BexUnicodeString.h>
#include <QorIWflInteropMessenger.h>

#include <string>
#include <vector>

/** The operations of this host's messenger: the library knows the interface, the host says what it can do. */
class HostMessenger : public QorIWflInteropMessenger {
public:
    /** Answers for the interface and for what it is derived from. */
    int QueryInterface(const GUID& iIid, BexBaseUnknown** oObject) override;

    /** Sends the document of an action. */
    virtual void Send(const BexUnicodeString& iActionId, const BexUnicodeString& iDocument) = 0;
    /** @return the replies that wait, by name. */
    virtual std::vector<std::string> Waiting() const = 0;
    /** @return the text of a reply, byte by byte. */
    virtual BexUnicodeString Receive(const std::string& iReply) const = 0;
    /** Lets go of a reply that has been taken in, so that it does not wait any more. */
    virtual void Settle(const std::string& iReply) = 0;
};

/** @return a messenger that sends by writing files into a folder and receives by reading files from it. */
QorIWflInteropMessenger_var OpenFolderMessenger(const std::string& iFolder);

/** @return the host's operations of the messenger that a handle holds; a handle that holds none is an error. */
HostMessenger& MessengerOf(const QorIWflInteropMessenger_var& iHandle);

#endif
