#pragma once

#include <QObject>
#include <QStringList>
#include <vector>

#include "host/oku/base.h"
#include "messenger/core/values/status.h"
#include "messenger/core/values/windows.h"

namespace oku {

class Accounts;
struct AccountEntry;
class PluginQueue;
class ServiceRegistry;

/// What the plugin hands over for windows: icons, pages of options and properties, status windows, the state of the
/// user's own card. All of it is kept as values; user interfaces show what they can.
class WindowServices : public QObject {
    Q_OBJECT

public:
    struct Icon {
        QString name;
        QString fallback;     ///< of a class of contact icons
        qint64 resource = 0;  ///< in the module, or 0
    };
    struct Page {
        QString id;
        QString parent;
        QString caption;
        OKU_HANDLER callback = nullptr;
        OKU_WORD context = 0;
    };

    WindowServices(ServiceRegistry& services, Accounts& accounts, PluginQueue& queue, QObject* parent = nullptr);

    [[nodiscard]] const std::vector<Icon>& icons() const { return icons_; }
    [[nodiscard]] const std::vector<Page>& optionPages() const { return optionPages_; }
    [[nodiscard]] const std::vector<Page>& propertyPages() const { return propertyPages_; }
    /// Tells the plugin what the person chose in the account's status window. False when none was prepared.
    bool confirmStatusWindow(AccountEntry& account, Status status, const QString& description, bool protect);
    void dropPlugin();

signals:
    void statusWindowRequested(const QString& account, const oku::StatusWindow& window);
    void busyChanged(bool busy);
    void cardStatus(const QString& account, const QString& text);

private:
    void provideGraphics(ServiceRegistry& services);
    OKU_WORD addOptionsPage(OKU_WORD extra);
    OKU_WORD addPropertiesPage(OKU_WORD param);
    OKU_WORD prepareStatusWindow(OKU_WORD param);
    OKU_WORD showStatusWindow(OKU_WORD param);
    OKU_WORD setStatusWindowTexts(OKU_WORD param);

    Accounts& accounts_;
    PluginQueue& queue_;
    std::vector<Icon> icons_;
    std::vector<Page> optionPages_;
    std::vector<Page> propertyPages_;
};

}  // namespace oku
