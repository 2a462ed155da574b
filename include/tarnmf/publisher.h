// SPDX-License-Identifier: Apache-2.0
/// @file
/// Checks batches of records against each other and registers them with the platform.
#ifndef TARNMF_PUBLISHER_H
#define TARNMF_PUBLISHER_H

#include "tarnmf/export.h"
#include "tarnmf/intf_class.h"
#include "tarnmf/module.h"
#include "tarnmf/runnable.h"

#include "platform/dlm.h"
#include "platform/errors.h"

/// Checks batches of records and registers them. For example, with the records of one load point:
/// @code
/// liMfPublisher* made = nullptr;
/// if (BtkErrorT e = liMfPublisher::CreateNew(&made, kIntfAgentView)) return e;
/// const tarnmf::DisposePtr<liMfPublisher> publisher(made);
/// if (BtkErrorT e = publisher->Add(data.classes.items, data.classes.count, data.modules.items,
///                                  data.modules.count, data.runnables.items,
///                                  data.runnables.count)) {
///   return e;
/// }
/// return publisher->Publish(true);
/// @endcode
///
/// A publisher borrows the records handed to it: they must outlive it and must not be changed by
/// others while one of its operations runs. It writes into them: each module's `selectedImpl`, each
/// implementation's `resolvedPath`, the class sides that it moves between records of one class, and
/// the `moduleref` of a service side, which becomes the resolved path.
///
/// Thread rules: one thread at a time per publisher. Publishers share only the platform's managers,
/// which are called without a lock: Publish of two publishers may overlap only where the managers
/// stand that.
class TARNMF_API liMfPublisher {
 public:
  /// Makes a publisher and stores it in `*out` (not null). `disposition` chooses the view of the
  /// classes that Publish registers: kIntfAgentView, or the client view for every other value.
  /// Released with Dispose. Codes: kBtkOk; kBtkNoMemory, `*out` is left as it was.
  static BtkErrorT CreateNew(liMfPublisher** out, IntfDispositionT disposition);

  /// Copies nothing.
  liMfPublisher(const liMfPublisher&) {}
  /// Copies nothing.
  liMfPublisher& operator=(const liMfPublisher&) { return *this; }

  /// Takes one batch of records, validated as a whole: against itself and against everything that
  /// earlier calls accepted. The arrays are borrowed for the call, the records until the publisher
  /// is destroyed. A count of 0 or less means none; its array is not read and may be null.
  ///
  /// After a failure nothing of the batch is kept, but changes already made to records stay: the
  /// selected implementations, and sides moved between records of one class. Codes:
  /// - kBtkOk: accepted; the records are registered by the next Publish.
  /// - kBtkNullArgument: an array is null while its count is positive; nothing has been touched.
  /// - kBtkUnexpected: the batch is refused: a module id accepted before, a module without
  ///   implementations or with two for one machine type, a class id accepted before unless the
  ///   record completes it, a missing side, a side that names neither a module of this batch nor
  ///   one that has the role from an earlier batch, a module in two roles that exclude each other;
  ///   or out of memory while checking.
  /// - kBtkNoMemory: out of memory.
  ///
  /// An exception of a platform call passes through; nothing of the batch is kept.
  virtual BtkErrorT Add(MfIntfClassT** classes, std::int32_t classCount, MfModuleT** modules,
                        std::int32_t moduleCount, MfRunnableT** runnables,
                        std::int32_t runnableCount) = 0;

  /// Registers everything added since the last Publish: resolves the modules, registers the
  /// interface references (left out, and dropped, when `registerInterfaces` is false), then the
  /// runnables. A step that fails ends the call; its records and those of the later steps wait for
  /// the next Publish, which starts again with the modules added since. Codes:
  /// - kBtkOk: success; a module that could not be resolved is no failure.
  /// - kBtkMissing: no service manager, and a service must be registered.
  /// - kBtkNotReady: no dynamic-library manager.
  /// - kBtkNoMemory: out of memory.
  /// - others: as the platform's managers returned them.
  ///
  /// An exception of a platform call passes through and leaves what a step that fails leaves.
  virtual BtkErrorT Publish(bool registerInterfaces) = 0;

  /// Destroys the publisher, not the records. Not on null: tarnmf::DisposePtr tests.
  virtual void Dispose();

 protected:
  liMfPublisher() = default;
  virtual ~liMfPublisher();
};

#endif  // TARNMF_PUBLISHER_H
