// SPDX-License-Identifier: MIT
#pragma once

/**
 * The process-wide stabilizer host and camera paths as at the start of the program, for the life of
 * this object and after it. Declare it behind the Project that a test hands to the host: the end of
 * this object lets a running job stop and deletes stabilizer and thread.
 */
class FreshHost
{
public:
    FreshHost();
    ~FreshHost();
    FreshHost(const FreshHost&) = delete;
    FreshHost& operator=(const FreshHost&) = delete;
};
