#include "efile/xmlvalidator.h"

#include "platform/fault.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <xercesc/framework/LocalFileInputSource.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/framework/XMLGrammarPoolImpl.hpp>
#include <xercesc/parsers/SAX2XMLReaderImpl.hpp>
#include <xercesc/sax/Locator.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/SecurityManager.hpp>
#include <xercesc/util/XMLEntityResolver.hpp>
#include <xercesc/util/XMLResourceIdentifier.hpp>
#include <xercesc/util/XMLUni.hpp>

#include <memory>

namespace {

using namespace xercesc;

constexpr int declarationCode = 1000; // beyond the parser's own: this program refuses what the parser would allow

QString textOf(const XMLCh *text)
{
    return text == nullptr ? QString() : QString::fromUtf16(text);
}

const XMLCh *parserText(const QString &text)
{
    return reinterpret_cast<const XMLCh *>(text.utf16());
}

XmlPlace placeOf(XMLFileLoc line, XMLFileLoc column)
{
    return {static_cast<int>(line), static_cast<int>(column)};
}

/// The first line of a file with a character that is none in UTF-8.
XmlPlace firstWrongLine(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    for (int line = 1; !file.atEnd(); ++line) {
        if (!file.readLine().isValidUtf8())
            return {line, 1};
    }
    return {};
}

/// Finds the files that a schema includes beside it, and no other.
class NeighbourResolver : public XMLEntityResolver
{
public:
    explicit NeighbourResolver(const QDir &folder)
        : m_folder(folder)
    {
    }

    InputSource *resolveEntity(XMLResourceIdentifier *wanted) override
    {
        const QString path = m_folder.filePath(QFileInfo(textOf(wanted->getSystemId())).fileName());
        return new LocalFileInputSource(parserText(path));
    }

private:
    QDir m_folder;
};

/// What the reader of a file meets beside elements: anything outside of it is empty, a declaration is an error.
class StrangerHandler : public DefaultHandler
{
public:
    explicit StrangerHandler(XmlErrorHandler &errors)
        : m_errors(errors)
    {
    }

    void setDocumentLocator(const Locator *const locator) override { m_locator = locator; }
    InputSource *resolveEntity(const XMLCh *const /*publicId*/, const XMLCh *const systemId) override
    {
        static const XMLByte nothing[1] = {0};
        return new MemBufInputSource(nothing, 0, systemId);
    }
    void startDTD(const XMLCh *const /*name*/, const XMLCh *const /*publicId*/,
                  const XMLCh *const /*systemId*/) override
    {
        const XmlPlace place =
            m_locator == nullptr ? XmlPlace() : placeOf(m_locator->getLineNumber(), m_locator->getColumnNumber());
        m_errors.error(place, QStringLiteral("a document type declaration is not allowed in a return"),
                       declarationCode);
    }

private:
    XmlErrorHandler &m_errors;
    const Locator *m_locator = nullptr;
};

/// Tells errors with the parser's code, which the parser's own error handlers do not get.
class CodedReader : public SAX2XMLReaderImpl
{
public:
    CodedReader(XMLGrammarPool *pool, QString path, XmlErrorHandler &errors)
        : SAX2XMLReaderImpl(XMLPlatformUtils::fgMemoryManager, pool)
        , m_path(std::move(path))
        , m_errors(errors)
    {
        setErrorHandler(&m_unused);
    }

    using SAX2XMLReaderImpl::error;
    void error(unsigned int code, const XMLCh *const domain, ErrTypes type, const XMLCh *const text,
               const XMLCh *const /*systemId*/, const XMLCh *const /*publicId*/, XMLFileLoc line,
               XMLFileLoc column) override
    {
        // The characters of a file are taken in large pieces: the place of a wrong one is that of the piece.
        const bool ofCharacters = type == ErrType_Fatal && XMLString::equals(domain, XMLUni::fgExceptDomain);
        const XmlPlace place = ofCharacters ? firstWrongLine(m_path) : placeOf(line, column);
        const int number = static_cast<int>(code);
        const QString message = textOf(text);
        if (type == ErrType_Warning)
            m_errors.ignorableWarning(place, message, number);
        else if (type == ErrType_Fatal)
            m_errors.fatalError(place, message, number);
        else
            m_errors.error(place, message, number);
    }

private:
    QString m_path;
    XmlErrorHandler &m_errors;
    DefaultHandler m_unused; // the parser reports nothing to a reader without a handler
};

/// Errors of a schema: the first is the reason why it cannot be used.
class SchemaErrors : public XmlErrorHandler
{
public:
    void error(const XmlPlace &place, const QString &message, int /*code*/) override
    {
        if (m_first.isEmpty())
            m_first = QStringLiteral("line %1: %2").arg(place.line).arg(message);
    }
    void fatalError(const XmlPlace &place, const QString &message, int code) override { error(place, message, code); }
    void ignorableWarning(const XmlPlace & /*place*/, const QString & /*message*/, int /*code*/) override {}
    [[nodiscard]] const QString &first() const { return m_first; }

private:
    QString m_first;
};

void setUp(SAX2XMLReader &reader)
{
    reader.setFeature(XMLUni::fgSAX2CoreNameSpaces, true);
    reader.setFeature(XMLUni::fgSAX2CoreValidation, true);
    reader.setFeature(XMLUni::fgXercesDynamic, false);
    reader.setFeature(XMLUni::fgXercesSchema, true);
    reader.setFeature(XMLUni::fgXercesUseCachedGrammarInParse, true);
}

void refuse(const QString &what)
{
    throw FaultError(FaultNumber::General, what, QStringLiteral("XML"));
}

void requireFile(const QString &path)
{
    const QFileInfo file(path);
    if (!file.isFile() || !file.isReadable())
        throw FaultError(FaultNumber::FileNotFound, QStringLiteral("%1 cannot be read.").arg(path));
}

/// A set of schemas, read and checked in full.
class GrammarSet
{
public:
    explicit GrammarSet(std::vector<XmlSchema> schemas)
        : m_schemas(std::move(schemas))
        , m_changed(changes())
    {
        // What a schema imports comes with it, so that each is read once.
        for (const XmlSchema &schema : m_schemas) {
            requireFile(schema.file);
            if (!holds(schema.space))
                load(schema.file);
        }
        m_pool.lockPool();
    }

    [[nodiscard]] bool isOf(const std::vector<XmlSchema> &schemas) const
    {
        return m_schemas == schemas && m_changed == changes();
    }
    [[nodiscard]] XMLGrammarPool *pool() { return &m_pool; }

private:
    /// When the schemas and what lies beside them were changed last.
    [[nodiscard]] QList<QDateTime> changes() const
    {
        QList<QDateTime> times;
        const QFileInfo first(m_schemas.empty() ? QString() : m_schemas.front().file);
        const auto beside = first.dir().entryInfoList({QStringLiteral("*.xsd")}, QDir::Files, QDir::Name);
        for (const QFileInfo &file : beside)
            times << file.lastModified();
        return times;
    }

    [[nodiscard]] bool holds(const QString &space)
    {
        RefHashTableOfEnumerator<Grammar> each = m_pool.getGrammarEnumerator();
        while (each.hasMoreElements()) {
            if (textOf(each.nextElement().getTargetNamespace()) == space)
                return true;
        }
        return false;
    }

    void load(const QString &file)
    {
        SchemaErrors errors;
        CodedReader reader(&m_pool, file, errors);
        NeighbourResolver resolver(QFileInfo(file).dir());
        setUp(reader);
        reader.setFeature(XMLUni::fgXercesSchemaFullChecking, true);
        reader.setFeature(XMLUni::fgXercesHandleMultipleImports, true);
        reader.setXMLEntityResolver(&resolver);
        const Grammar *grammar =
            reader.loadGrammar(LocalFileInputSource(parserText(file)), Grammar::SchemaGrammarType, true);
        if (!errors.first().isEmpty() || grammar == nullptr)
            refuse(QStringLiteral("The schema %1 cannot be used: %2").arg(file, errors.first()));
    }

    std::vector<XmlSchema> m_schemas;
    QList<QDateTime> m_changed;
    XMLGrammarPoolImpl m_pool;
};

/// The parser's library, up as long as the program runs, with the schemas that were read so far.
class Library
{
public:
    Library() { XMLPlatformUtils::Initialize(); }
    ~Library()
    {
        m_sets.clear();
        XMLPlatformUtils::Terminate();
    }
    Library(const Library &) = delete;
    Library &operator=(const Library &) = delete;

    XMLGrammarPool *grammars(const std::vector<XmlSchema> &schemas)
    {
        for (const auto &set : m_sets) {
            if (set->isOf(schemas))
                return set->pool();
        }
        m_sets.push_back(std::make_unique<GrammarSet>(schemas));
        return m_sets.back()->pool();
    }

private:
    std::vector<std::unique_ptr<GrammarSet>> m_sets;
};

void parse(const QString &path, XMLGrammarPool *pool, XmlErrorHandler &handler)
{
    constexpr XMLSize_t mostEntities = 10;
    SecurityManager limits;
    limits.setEntityExpansionLimit(mostEntities);
    StrangerHandler stranger(handler);
    CodedReader reader(pool, path, handler);
    setUp(reader);
    reader.setFeature(XMLUni::fgXercesLoadSchema, false);
    reader.setFeature(XMLUni::fgXercesLoadExternalDTD, false);
    reader.setFeature(XMLUni::fgXercesSkipDTDValidation, true);
    reader.setFeature(XMLUni::fgXercesDisableDefaultEntityResolution, true);
    reader.setFeature(XMLUni::fgXercesContinueAfterFatalError, false);
    reader.setProperty(XMLUni::fgXercesSecurityManager, &limits);
    reader.setContentHandler(&stranger);
    reader.setLexicalHandler(&stranger);
    reader.setEntityResolver(&stranger);
    reader.parse(LocalFileInputSource(parserText(path)));
}

} // namespace

void ValidateXml(const QString &path, const std::vector<XmlSchema> &schemas, XmlErrorHandler &handler)
{
    static Library library;
    requireFile(path);
    try {
        parse(path, library.grammars(schemas), handler);
    } catch (const XMLException &error) {
        refuse(textOf(error.getMessage()));
    } catch (const OutOfMemoryException &) {
        refuse(QStringLiteral("There is not enough memory to check %1.").arg(path));
    }
}
