// SPDX-License-Identifier: Apache-2.0
/// @file
/// Hooks of the host layer: what a host program (a tool, a test, an embedding application) may
/// install, set and look at. Set them before the library is used; none of them takes a lock, except
/// that the allocation counters may be read at any time.
#ifndef PLATFORM_HOST_BTKHOST_H
#define PLATFORM_HOST_BTKHOST_H

#include "platform/dlm.h"
#include "platform/service.h"
#include "platform/types.h"

// ---- Managers ----------------------------------------------------------------------------------

/// What btkDlmManager::Instance returns from now on; null: none is available. The caller keeps
/// ownership. The embedded one (embedded_dlm.h) is installed at start.
BTK_API void btkHostSetDlmManager(btkDlmManager* manager);
/// The same for btkServiceManager::Instance and the embedded manager of embedded_services.h.
BTK_API void btkHostSetServiceManager(btkServiceManager* manager);

/// Receives the interface references handed to btkIntfPublishRefList.
class BTK_API btkHostIntfRegistry {
 public:
  /// What btkIntfPublishRefList was called with; its result is returned from there.
  virtual BtkErrorT PublishRefList(const IntfRefEntryT* entries, std::uint64_t count,
                                   bool publish) = 0;

 protected:
  virtual ~btkHostIntfRegistry() = default;
};
/// What receives them from now on. Null restores the embedded dynamic-library manager.
BTK_API void btkHostSetIntfRegistry(btkHostIntfRegistry* registry);

/// What btkSvcSession::Current returns; null (the start value): the process is in no service.
BTK_API void btkHostSetServiceSession(btkSvcSession* session);

// ---- Process queries ---------------------------------------------------------------------------

/// The path of the process's load point, which is copied. Null or empty: the process has none (the
/// start value).
BTK_API void btkHostSetProcessLoadpoint(const btkWChar* path);
/// The path of the running executable, which is copied. Null restores the real one. A path that
/// does not fit into the caller's buffer makes btkDlmGetCurProcessImagePathW answer kBtkTooLong.
BTK_API void btkHostSetExecutablePath(const btkWChar* path);
/// The machine-type texts of the process and of the platform's other build, which are copied. Null
/// restores the machine's own: "linux-x64" and "linux-x86", or their counterparts elsewhere.
BTK_API void btkHostSetMachineTypes(const char* native, const char* other);

// ---- Files -------------------------------------------------------------------------------------

/// From now on btkFileStream opens the file at this path, which is copied, whatever it is: a pipe or
/// a device, too, reading of which may take for ever. Without it only regular files are opened, since
/// nobody has chosen those that are found in a directory.
BTK_API void btkHostAdmitSpecialFile(const char* path);

// ---- Allocation failures -----------------------------------------------------------------------

/// The n-th allocation (counted from 0) that the platform's allocators are asked for from now on
/// fails, once. A negative n switches this off. One switch for the whole process.
BTK_API void btkHostFailAllocation(std::int64_t n);
/// True when the failure that was set last has happened.
BTK_API bool btkHostAllocationFailed();
/// Blocks and strings of the platform's allocators that are allocated now.
BTK_API std::int64_t btkHostLiveAllocations();
/// The size in bytes that a block of the platform's allocators was last asked for. 0 unless the
/// host layer is built with a sanitizer: only then blocks remember it.
BTK_API std::size_t btkHostBlockSize(const void* block);

#endif  // PLATFORM_HOST_BTKHOST_H
