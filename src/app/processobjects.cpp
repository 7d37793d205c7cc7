// SPDX-License-Identifier: MIT
#include "app/log.h"
#include "app/programapplication.h"
#include "batch/stabilizerhost.h"
#include "stabilizer/camerapath.h"

#include <QList>
#include <QResource>
#include <QUrl>

// All objects that live as long as the process. C++ fixes the order of construction, and in reverse
// that of destruction, only inside one file: the host, which stops the worker, must go before the
// log that the worker writes to. Their constructors touch neither one another nor any widget.

// The static library would leave the resources out unless somebody asks for them. Outside any
// namespace, where the resources' own initializer stands.
[[maybe_unused]] static const bool ResourcesRegistered = []
{
    Q_INIT_RESOURCE(molvane);
    return true;
}();

Log ProgramLog;
StabilizerHost ProgramHost;
QList<QUrl> SidebarUrls;
std::recursive_mutex EngineLock;
CameraPath PathHorizontal(true);
CameraPath PathVertical(true);
CameraPath PathRotation(false);
CameraPath PathRotationDegrees(false);
QApplication* ProgramApplication = nullptr;
