// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusAbstractAdaptor>
#include <QStringList>
#include <QVariantMap>

#include "app/desktop/SingleInstance.h"

namespace dorvanel::desktop {

/// org.freedesktop.Application, as the Desktop Entry Specification describes it.
class ApplicationAdaptor final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

  public:
    ApplicationAdaptor(QObject* parent, InstanceHandlers handlers);

  public slots:
    void Activate(const QVariantMap& platformData);
    void Open(const QStringList& uris, const QVariantMap& platformData);
    void ActivateAction(const QString& name, const QVariantList& parameter,
                        const QVariantMap& platformData);

  private:
    InstanceHandlers handlers_;
};

}  // namespace dorvanel::desktop
