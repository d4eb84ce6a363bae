#pragma once

#include "platform/offer.h"

#include <QString>

#include <vector>

/// Validation of a file against schemas, as a stream: a file of any size takes the same memory.
///
/// The file is a stranger's: nothing that it names is fetched, from this machine or the network, a document type
/// declaration is an error, and entities are not expanded beyond a few.

/// Where in a file; line and column count from 1, 0 when it is not known.
struct XmlPlace
{
    int line = 0;
    int column = 0;
};

/// Receives what is wrong with a file. Never stops the parser, which itself ends at a fatal error.
class FBT_OFFERED XmlErrorHandler
{
public:
    XmlErrorHandler() = default;
    virtual ~XmlErrorHandler() = default;
    XmlErrorHandler(const XmlErrorHandler &) = delete;
    XmlErrorHandler &operator=(const XmlErrorHandler &) = delete;

    virtual void error(const XmlPlace &place, const QString &message, int code) = 0;
    virtual void fatalError(const XmlPlace &place, const QString &message, int code) = 0;
    virtual void ignorableWarning(const XmlPlace &place, const QString &message, int code) = 0;
};

/// A schema and the namespace that it is for, empty for elements without one.
struct XmlSchema
{
    QString space;
    QString file;

    bool operator==(const XmlSchema &) const = default;
};

/// Validates a file; every error is told to `handler`. The schemas are read once and kept as long as the program runs,
/// until one of their files changes. Throws FaultError when the file or a schema cannot be read, or a schema is wrong.
FBT_OFFERED void ValidateXml(const QString &path, const std::vector<XmlSchema> &schemas, XmlErrorHandler &handler);
