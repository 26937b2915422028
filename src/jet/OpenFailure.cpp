// SPDX-License-Identifier: MIT
#include "jet/OpenFailure.h"

#include "text/Messages.h"

namespace vellumo {

std::string openFailureText(OpenFailure failure)
{
    switch (failure) {
    case OpenFailure::Missing: return localized("there is no such file");
    case OpenFailure::NoPermission: return localized("you may not read it");
    case OpenFailure::NotAFile: return localized("it is a folder or a device");
    case OpenFailure::NotADatabase: return localized("it is no Access database, or its first page is damaged");
    case OpenFailure::NewerFormat: return localized("it has the format of Access 2007 or newer");
    case OpenFailure::UnknownNewer: return localized("it is of an unknown newer version");
    case OpenFailure::NeedsPassword: return localized("it is encrypted and needs a password");
    case OpenFailure::WrongPassword: return localized("the password is wrong");
    case OpenFailure::UnknownEncryption: return localized("it is encrypted in a way that is not known");
    case OpenFailure::Unreadable: return localized("reading it failed");
    case OpenFailure::TooLittleMemory: return localized("there is too little memory");
    case OpenFailure::Stopped: break;
    }
    return localized("it was stopped");
}

std::string openFailureAdvice(OpenFailure failure)
{
    switch (failure) {
    case OpenFailure::Missing: return localized("It may have been moved, renamed or deleted.");
    case OpenFailure::NoPermission: return localized("Ask its owner for permission to read it, or copy it.");
    case OpenFailure::NotADatabase:
        return localized("If it is an archive, unpack it first; if it was sent to you, ask for it again.");
    case OpenFailure::NewerFormat:
    case OpenFailure::UnknownNewer:
        return localized("Access can save a copy in the format of Access 2000 or 2002-2003.");
    case OpenFailure::WrongPassword: return localized("Capital and small letters are not the same in a password.");
    case OpenFailure::UnknownEncryption:
        return localized("Access can remove the password, or save a copy without one.");
    case OpenFailure::Unreadable:
        return localized("The disk may be failing: copy the file to another one before you do anything else.");
    case OpenFailure::TooLittleMemory: return localized("Close other programs and open it again.");
    default: return {};
    }
}

} // namespace vellumo
