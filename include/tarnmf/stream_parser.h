// SPDX-License-Identifier: Apache-2.0
/// @file
/// Reads one manifest document from a stream.
#ifndef TARNMF_STREAM_PARSER_H
#define TARNMF_STREAM_PARSER_H

#include "tarnmf/export.h"
#include "tarnmf/ldp_data.h"

#include "platform/errors.h"
#include "platform/stream.h"

/// Reads manifest documents. A parser keeps nothing between its calls. For example:
/// @code
/// MfLdpDataT data;
/// const tarnmf::DisposePtr<liMfStmParser> parser(liMfStmParser::CreateNew(nullptr));
/// if (!parser) return kBtkNoMemory;
/// if (BtkErrorT e = parser->Parse(&data, stream)) return e;
/// for (const MfModuleT* module : data.modules) Show(*module);
/// @endcode
class TARNMF_API liMfStmParser {
 public:
  /// Makes a parser of manifest documents, or null when out of memory. `kind` selects nothing and
  /// may be null. The caller releases the parser with Dispose.
  ///
  /// Thread rules: may be called from several threads at once.
  static liMfStmParser* CreateNew(const char* kind);

  /// Copies nothing.
  liMfStmParser(const liMfStmParser&) {}
  /// Copies nothing.
  liMfStmParser& operator=(const liMfStmParser&) { return *this; }

  /// Reads the whole stream as one manifest document and appends the records that it declares to
  /// the lists of `data`, classes, modules and runnables each in document order. `data->loadpoint`
  /// is neither read nor written. The records own copies of all they hold; nothing refers to the
  /// stream afterwards. The caller keeps its reference on `stream`, which is not closed.
  ///
  /// A failed Parse keeps nothing: the three lists of `data` are empty afterwards, and the records
  /// that they held before the call have been destroyed as well (except for kBtkNullArgument).
  ///
  /// The XML library reads with its defaults. Where it reports a document that is not well formed
  /// by handing over what it could read, that part is what is read here; where it throws, the
  /// exception (its XMLException, DOMException or OutOfMemoryException) passes through, and the
  /// lists of `data` are empty, too. The same holds for an exception thrown by the stream. A
  /// negative count from the stream's Read ends the document there. Documents of 2 GiB and more are
  /// not supported.
  ///
  /// Codes, of the first fault in the order of reading (attributes in the order in which the XML
  /// library maps them):
  /// - kBtkOk: success.
  /// - kBtkMissing: a required attribute or child element is missing.
  /// - kBtkRefused: "resolvepath" was given.
  /// - kBtkNullArgument: `data` or `stream` is null; nothing has been touched.
  /// - kBtkForbidden: a forbidden combination of attributes, elements or values.
  /// - kBtkUnexpected: an unknown or misplaced element, attribute or node; no root element, or a
  ///   root that is no manifest root or does not carry "version" alone.
  /// - kBtkOutOfRange: a 16-bit number outside 0 to 32767.
  /// - kBtkNoMemory: out of memory.
  /// - kBtkNotSharedLib: a module in a class side whose type is not "sharedLib".
  /// - kBtkDuplicate: an attribute, element or record given twice where one is allowed.
  /// - kBtkWrongVersion: the root's "version" is not 1.
  /// - kBtkMalformed: a malformed or empty value, or no document at all.
  /// - others: a text conversion failed.
  ///
  /// Thread rules: one parser may be used by several threads at once as long as each call has its
  /// own `data` and `stream`.
  virtual BtkErrorT Parse(MfLdpDataT* data, btkIStream* stream) = 0;

  /// Destroys the parser. Not on null: tarnmf::DisposePtr tests.
  virtual void Dispose();

 protected:
  liMfStmParser() = default;
  virtual ~liMfStmParser();
};

#endif  // TARNMF_STREAM_PARSER_H
