// SPDX-License-Identifier: MIT
#include "app/log.h"
#include "app/programapplication.h"
#include "batch/stabilizerhost.h"
#include "project/filedialogs.h"
#include "stabilizer/camerapath.h"

#include <QResource>

// All objects that live as long as the process. C++ fixes the order of construction, and in reverse
// that of destruction, only inside one file: the host, which stops the worker, must go before the
// log that the worker writes to. Their constructors touch neither one another nor any widget.

// The static library would leave the resources out unless somebody asks for them. Outside any
// namespace, where the resources' own initializer stands.
[[maybe_unused]] static const bool ResourcesRegistered = []
{
    Q_INIT_RESOURCE(molvane);
    Q_INIT_RESOURCE(molvane_fonts);
    return true;
}();

Log ProgramLog;
StabilizerHost ProgramHost;
QList<QUrl> SidebarUrls;
std::recursive_mutex EngineLock;
CameraPath PathHorizontal(true);  // true for the axes in pixels
CameraPath PathVertical(true);
CameraPath PathRotation(false);
CameraPath PathRotationDegrees(false);
QApplication* ProgramApplication = nullptr;

namespace
{
/**
 * Gone before all of the above: when the process ends in the middle of a job, the worker leaves
 * first.
 */
struct WorkerGuard
{
    WorkerGuard() = default;
    WorkerGuard(const WorkerGuard&) = delete;
    WorkerGuard& operator=(const WorkerGuard&) = delete;
    ~WorkerGuard() { ProgramHost.LetWorkerLeave(); }
};

const WorkerGuard WorkerLeavesFirst;
}  // namespace
