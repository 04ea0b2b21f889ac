// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <functional>
#include <string>
#include <vector>

namespace dorvanel::desktop {

/// What other programs, and second launches, may ask of the running program.
struct InstanceHandlers {
    std::function<void()> activate;
    std::function<void(std::vector<std::string>)> open;  ///< absolute paths in bytes
    std::function<void(const std::string&)> activateAction;
    /// Files to ask about: absolute paths in bytes; none where none of them is of this machine.
    std::function<void(std::vector<std::string>)> ask;
};

/// One running program for each user and home folder, as a service of the session bus with the
/// interface org.freedesktop.Application. Main thread.
class SingleInstance final : public QObject {
  public:
    enum class Role {
        first,   ///< this process is the program, and takes requests
        second,  ///< the program is running already
        alone,   ///< there is no session bus: nobody can tell
    };

    /// `home` tells the program of one home folder from that of another.
    explicit SingleInstance(const std::string& home,
                            const QDBusConnection& bus = QDBusConnection::sessionBus());
    ~SingleInstance() override;

    /// Whose the home folder is: the program in the account's own is the one that the desktop and
    /// its file managers find, by the name `desktopName`; the bus starts it where it does not run.
    enum class Home { accounts, another };

    /// Tries to become the first.
    Role claim(InstanceHandlers handlers, Home home = Home::another);

    /// As the second: hands the files and the action over to the first, or brings it forward when
    /// there is neither. False when it did not take them.
    bool handOver(const std::vector<std::string>& files, const std::string& action);
    /// As the second: has the first ask about the files, and does not wait for the answer. False
    /// when it did not take them.
    bool handOverToAsk(const std::vector<std::string>& files);

    static constexpr const char* desktopName = "com.dorvanel.DorvanelX";
    static constexpr const char* objectPath = "/com/dorvanel/DorvanelX";
    static constexpr const char* interfaceName = "org.freedesktop.Application";

  private:
    bool send(const QString& method, QVariantList arguments);

    QDBusConnection bus_;
    QString name_;
    bool claimed_ = false;
    bool isTheDesktops_ = false;  ///< has the desktop's name too
};

}  // namespace dorvanel::desktop
