#include "launcher/modulelibrary.h"

#include "frame/moduleentry.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

ModuleLibrary::~ModuleLibrary()
{
    destroy();
}

ClsMain *ModuleLibrary::load(const QString &path, const ObjectTable *objects, QString *why)
{
    destroy();
    m_library.setFileName(path);
    // All of the library's names are needed at once: a part that does not fit is noticed here and not in the middle.
    m_library.setLoadHints(QLibrary::ResolveAllSymbolsHint | QLibrary::PreventUnloadHint);
    if (!m_library.load()) {
        *why = QStringLiteral("The module cannot be loaded: %1").arg(m_library.errorString());
        return nullptr;
    }
    const auto create = reinterpret_cast<CreateFbtModuleFunction>(m_library.resolve("CreateFbtModule"));
    if (create == nullptr || m_library.resolve("DestroyFbtModule") == nullptr) {
        *why = QStringLiteral("%1 is not the module: it has no factory.").arg(path);
        return nullptr;
    }
    m_module = create(objects);
    return m_module;
}

void ModuleLibrary::destroy()
{
    if (m_module == nullptr)
        return;
    reinterpret_cast<DestroyFbtModuleFunction>(m_library.resolve("DestroyFbtModule"))(m_module);
    m_module = nullptr;
}

QString ModuleLibrary::usualPath()
{
    const QString name = QStringLiteral("/libpelkfbt-frame.so");
    const QString installed = QCoreApplication::applicationDirPath() + QStringLiteral("/../" FBT_LIBDIR "/pelkfbt");
    const QString built = QCoreApplication::applicationDirPath() + QStringLiteral("/../lib");
    return QDir::cleanPath((QFileInfo::exists(installed + name) ? installed : built) + name);
}
