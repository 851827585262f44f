#pragma once
// Error family of the drawing SDK: every failure of the SDK is thrown as an OdError (or a
// subclass naming the kind), never returned silently.
#include <stdexcept>
#include <string>

#include "OdString.h"

enum OdResult {
    eOk = 0,
    eInvalidInput,
    eNotThatKindOfClass,
    eInvalidIndex,
    eKeyNotFound,
    eFileNotFound,
    eNotADrawing,
    eFileAccessErr,
    eIncompatibleVersion,
    eWasOpenForRead,
    eNullObjectId,
    eAlreadyInDb,
    eInvalidContext,
    eMalformedRecord,
    eDuplicateKey,
};

class OdError : public std::runtime_error {
public:
    explicit OdError(OdResult code, const OdString& description = OdString())
        : std::runtime_error(description.isEmpty() ? defaultText(code) : description.toUtf8()),
          m_code(code), m_description(description.isEmpty() ? OdString::fromUtf8(defaultText(code)) : description) {}
    explicit OdError(const OdString& description) : OdError(eInvalidInput, description) {}

    OdResult code() const { return m_code; }
    const OdString& description() const { return m_description; }

    static std::string defaultText(OdResult code) {
        switch (code) {
        case eOk: return "No error";
        case eInvalidInput: return "Invalid input";
        case eNotThatKindOfClass: return "Object is not of the expected class";
        case eInvalidIndex: return "Invalid index";
        case eKeyNotFound: return "Key not found";
        case eFileNotFound: return "File not found";
        case eNotADrawing: return "The file is not a drawing";
        case eFileAccessErr: return "File access error";
        case eIncompatibleVersion: return "The file was written by a newer version";
        case eWasOpenForRead: return "Object is open for read only";
        case eNullObjectId: return "Null object id";
        case eAlreadyInDb: return "Object is already in the database";
        case eInvalidContext: return "Invalid context";
        case eMalformedRecord: return "A stored record is malformed";
        case eDuplicateKey: return "The name is already in use";
        }
        return "Unknown error";
    }

private:
    OdResult m_code;
    OdString m_description;
};

class OdError_NotThatKindOfClass : public OdError {
public:
    OdError_NotThatKindOfClass() : OdError(eNotThatKindOfClass) {}
};

class OdError_InvalidIndex : public OdError {
public:
    OdError_InvalidIndex() : OdError(eInvalidIndex) {}
};

class OdError_FileNotFound : public OdError {
public:
    explicit OdError_FileNotFound(const OdString& path)
        : OdError(eFileNotFound, OdString(L"File not found: ") + path) {}
};
