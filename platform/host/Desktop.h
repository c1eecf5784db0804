#pragma once
#include "platform/host/Result.h"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace vistrel::host {

/// An outgoing mail from the compose screen. Addresses as typed.
struct OutgoingMail {
    std::vector<std::string> to;
    std::vector<std::string> cc;
    std::vector<std::string> bcc;
    std::string subject;
    std::string body;
    bool isHTML = false;
};

/// Lets the user choose from programs by their names, the preferred one first; `open` is called
/// with the chosen one's index, or not at all.
using AskForProgram = std::function<void(const std::vector<std::string>& names,
                                         std::function<void(std::size_t index)> open)>;

/// The desktop around the application. Any service may be missing.
class Desktop {
public:
    virtual ~Desktop() = default;
    virtual bool canOpenURL(const std::string& url) = 0;
    virtual bool openURL(const std::string& url) = 0;
    virtual void setIdleTimerDisabled(bool disabled) = 0;
    virtual void vibrate() = 0;
    /// Shows a notification; plain text.
    virtual void notify(const std::string& title, const std::string& text) = 0;

    /// Copies a file of the machine, given by its address, to a machine path that is free: whole or
    /// not at all. Both functions run on the loop, `done` once.
    virtual void copyFile(const std::string& url, const std::string& machinePath,
                          std::function<void(double fraction)> progress,
                          std::function<void(Status)> done) = 0;

    /// Opens a file of the machine with a program that the user chooses. Where the desktop cannot
    /// ask, `ask` is called. `done` runs once, on the loop, unless nothing is chosen; a failure's
    /// message may be empty.
    virtual void openWith(const std::string& machinePath, AskForProgram ask,
                          std::function<void(Status)> done) = 0;
    /// Shows it in the file manager.
    virtual void showInFolder(const std::string& machinePath, std::function<void(Status)> done) = 0;

    /// True when an outgoing account is configured.
    virtual bool canSendMail() = 0;
    /// `done` runs once, on the loop, with the outcome.
    virtual void sendMail(OutgoingMail mail, std::function<void(double fraction)> progress,
                          std::function<void(Status)> done) = 0;
    /// Keeps an unsent mail in the drafts folder.
    virtual Status saveDraft(const OutgoingMail& mail) = 0;
};

/// Information about the machine.
struct DeviceIdentity {
    std::string model;            ///< "iPad"-like product name: here the kind of device
    std::string machine;          ///< hardware model string
    std::string systemName;       ///< name of the distribution
    std::string systemVersion;    ///< "12.5"; the kernel's for a system without releases
    std::string uniqueIdentifier; ///< a keyed digest; never the raw machine id
    std::vector<std::string> languages;
};

class Device {
public:
    virtual ~Device() = default;
    virtual const DeviceIdentity& identity() = 0;
};

}
