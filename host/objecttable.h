#pragma once

#include "platform/offer.h"

#include <QHash>
#include <QString>

#include <functional>
#include <memory>

/// What every object of the suite is: made by name, owned by the one that asked for it.
class FBT_OFFERED SuiteObject
{
public:
    SuiteObject() = default;
    virtual ~SuiteObject() = default;
    SuiteObject(const SuiteObject &) = delete;
    SuiteObject &operator=(const SuiteObject &) = delete;
};

/// The objects of the suite by class name, such as "WexaBase.ClsMain". The launcher registers its own, a host can
/// register others, and a test can leave one out.
class FBT_OFFERED ObjectTable
{
public:
    using Factory = std::function<std::unique_ptr<SuiteObject>()>;

    void add(const QString &className, const Factory &factory) { m_factories.insert(className, factory); }
    void remove(const QString &className) { m_factories.remove(className); }
    [[nodiscard]] bool knows(const QString &className) const { return m_factories.contains(className); }

    /// A new object of that class, or null when none is registered.
    [[nodiscard]] std::unique_ptr<SuiteObject> create(const QString &className) const
    {
        const auto found = m_factories.constFind(className);
        return found == m_factories.constEnd() ? nullptr : (*found)();
    }

private:
    QHash<QString, Factory> m_factories;
};
