#include "profile.h"

#include <QDir>
#include <QFile>

namespace celldesk {

bool MakeProfile(const QString& folder) {
  QDir(folder).removeRecursively();
  if (!QDir().mkpath(folder + "/config/celldesk") || !QDir().mkpath(folder + "/run")) return false;
  QFile::setPermissions(folder + "/run", QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  qputenv("XDG_CONFIG_HOME", (folder + "/config").toUtf8());
  qputenv("XDG_DATA_HOME", (folder + "/data").toUtf8());
  qputenv("XDG_RUNTIME_DIR", (folder + "/run").toUtf8());
  return QFile::copy(CELLDESK_FIRST_SETTINGS, folder + "/config/celldesk/settings.ini");
}

}  // namespace celldesk
