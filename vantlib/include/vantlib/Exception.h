#pragma once
// Failures of the library data module. Every kind derives from vantlib::Exception, which is
// copyable and carries its message both as OdString and as UTF-8 for std::exception::what().
#include <exception>
#include <string>

#include <OdString.h>

#include <vantlib/Types.h>

namespace vantlib {

class Exception : public std::exception {
public:
    Exception() : Exception(OdString(L"Library error")) {}
    explicit Exception(const OdString& message) : m_message(message), m_what(message.toUtf8()) {}
    const OdString& message() const { return m_message; }
    const char* what() const noexcept override { return m_what.c_str(); }

private:
    OdString m_message;
    std::string m_what;
};

// An object of that kind and name already exists and the clash was not resolved.
class ObjectNotUnique : public Exception {
public:
    ObjectNotUnique() : Exception(OdString(L"An object with that name already exists")) {}
    ObjectNotUnique(ObjectType type, const OdString& name)
        : Exception(OdString::formatted(L"An object of kind %u named '%ls' already exists", unsigned(type), name.c_str())),
          m_type(type), m_name(name) {}
    // With a message that says where the name is taken (a property set in its namespace).
    ObjectNotUnique(ObjectType type, const OdString& name, const OdString& message)
        : Exception(message), m_type(type), m_name(name) {}
    ObjectType objectType() const { return m_type; }
    const OdString& name() const { return m_name; }

private:
    ObjectType m_type = kUnknownObject;
    OdString m_name;
};

// A request that contradicts the library's contents: an unknown id, a reference to an object
// that does not exist, an object without a library, a value out of range.
class ConsistencyError : public Exception {
public:
    using Exception::Exception;
};

// Library files. These are raised before anything is written, so the file stays untouched.
class FileError : public Exception {
public:
    FileError(const OdString& path, const OdString& message) : Exception(message), m_path(path) {}
    const OdString& path() const { return m_path; }

private:
    OdString m_path;
};

class FileMissing : public FileError {
public:
    explicit FileMissing(const OdString& path) : FileError(path, OdString(L"Library file not found: ") + path) {}
};

// Not an SQLite database, damaged, or a database without library tables.
class NotALibrary : public FileError {
public:
    NotALibrary(const OdString& path, const OdString& reason)
        : FileError(path, OdString::formatted(L"Not a library file: %ls (%ls)", path.c_str(), reason.c_str())) {}
};

// Written by a newer version of this module: its schema version is above the supported one.
class NewerSchema : public FileError {
public:
    NewerSchema(const OdString& path, int found, int supported)
        : FileError(path, OdString::formatted(L"Library file %ls has schema version %d; this version supports up to %d",
                                              path.c_str(), found, supported)),
          m_found(found), m_supported(supported) {}
    int foundVersion() const { return m_found; }
    int supportedVersion() const { return m_supported; }

private:
    int m_found;
    int m_supported;
};

// A write was attempted on a library opened read-only or stored in a read-only file.
class ReadOnly : public FileError {
public:
    explicit ReadOnly(const OdString& path) : FileError(path, OdString(L"Library is read-only: ") + path) {}

protected:
    ReadOnly(const OdString& path, const OdString& message) : FileError(path, message) {}
};

// The file of an open library stopped accepting writes (its permissions or its folder's
// changed, the disk refused or is full). The change was rolled back, what was saved before
// stays, and the library is read-only from then on.
class WriteRefused : public ReadOnly {
public:
    WriteRefused(const OdString& path, const OdString& reason)
        : ReadOnly(path, OdString::formatted(L"Library file %ls can no longer be written (%ls); the change was not "
                                             L"saved and the library stays open for reading only",
                                             path.c_str(), reason.c_str())) {}
};

// The file of an open library was deleted or replaced by another file. Nothing is written into
// the file that is gone; the library is read-only from then on.
class FileReplaced : public ReadOnly {
public:
    explicit FileReplaced(const OdString& path)
        : ReadOnly(path, OdString::formatted(L"Library file %ls was deleted or replaced while it was open; the change "
                                             L"was not saved and the library stays open for reading only",
                                             path.c_str())) {}
};

// The library's storage is damaged (SQLite found malformed pages). Such a file is not written.
class Damaged : public FileError {
public:
    Damaged(const OdString& path, const OdString& reason)
        : FileError(path, OdString::formatted(L"%ls: the library is damaged: %ls; run vlib check", path.c_str(),
                                              reason.c_str())) {}
};

// A program stopped while writing the library and its journal still holds the unfinished
// change. The first open that may write the file undoes it; an open that may not write
// cannot read the file until then.
class NeedsRecovery : public FileError {
public:
    explicit NeedsRecovery(const OdString& path)
        : FileError(path, OdString::formatted(L"Library file %ls needs recovery: a program stopped while writing it. "
                                              L"Open it once with write access to recover it",
                                              path.c_str())) {}
};

// The library already exists where a new one was to be created.
class AlreadyExists : public FileError {
public:
    explicit AlreadyExists(const OdString& path) : FileError(path, OdString(L"File already holds a library: ") + path) {}
};

// The storage engine failed (disk full, I/O error, lock wait timed out); the transaction was
// rolled back.
class StorageError : public Exception {
public:
    explicit StorageError(const OdString& message, int sqliteCode = 0) : Exception(message), m_code(sqliteCode) {}
    // The extended SQLite result code, 0 when the failure did not come from SQLite.
    int sqliteCode() const { return m_code; }

private:
    int m_code;
};

}  // namespace vantlib
