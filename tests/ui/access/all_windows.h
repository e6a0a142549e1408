#pragma once

#include <QWidget>
#include <functional>
#include <string>
#include <vector>

namespace celldesk {

/// A window that is on screen, by a name for the test's messages.
using Visit = std::function<void(const std::string& name, QWidget& window)>;

/// The main window with each of its folders: full, and empty and not connected.
void VisitFolders(const Visit& visit);
/// Every dialog of the program, opened the way a user opens it; one that is left open is cancelled.
void VisitDialogs(const Visit& visit);
/// Both.
void VisitWindows(const Visit& visit);

/// The controls that take the focus by key and are enabled, seen and no parts of others.
std::vector<QWidget*> ReachableControls(QWidget& window);
/// A control as the test's messages name it.
std::string Called(const QWidget& control);

}  // namespace celldesk
