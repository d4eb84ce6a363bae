#include "efile/returnschemas.h"

#include "efile/itr8.h"

namespace {

XmlSchema schema(const char *path, const QString &file)
{
    return {QString::fromLatin1(efilingNamespace) + QString::fromLatin1(path), file};
}

} // namespace

std::vector<XmlSchema> Form3BSchemas(const QString &file)
{
    return {{QString(), file}};
}

std::vector<XmlSchema> Itr8Schemas(const QString &folder, int year)
{
    constexpr int lastUnnumbered = 2007;
    const bool numbered = year > lastUnnumbered;
    const auto file = [&](const char *name) {
        return folder + QString::fromLatin1(name) + (numbered ? QString::number(year) : QString()) +
               QStringLiteral(".xsd");
    };
    std::vector<XmlSchema> schemas{schema("/main", file("corpitrmain"))};
    if (numbered) {
        schemas.push_back(schema("/ITR5", file("itr5s")));
        schemas.push_back(schema("/ITR6", file("itr6s")));
    }
    schemas.push_back(schema("/ITR8", file("itr8s")));
    schemas.push_back(schema("/Corpmaster", file("corpmaster")));
    return schemas;
}
