// SPDX-License-Identifier: MIT
#include "support/freshhost.h"

#include "batch/stabilizerhost.h"
#include "stabilizer/camerapath.h"

#include <new>

namespace
{
void Renew(CameraPath& path, bool isPixelAxis)
{
    path.~CameraPath();
    new (&path) CameraPath(isPixelAxis);
}

/** Objects with identity cannot be assigned: each is made anew in its own place. */
void RenewAll()
{
    ProgramHost.~StabilizerHost();
    new (&ProgramHost) StabilizerHost;
    Renew(PathHorizontal, true);
    Renew(PathVertical, true);
    Renew(PathRotation, false);
    Renew(PathRotationDegrees, false);
}
}  // namespace

FreshHost::FreshHost()
{
    RenewAll();
}

FreshHost::~FreshHost()
{
    RenewAll();
}
