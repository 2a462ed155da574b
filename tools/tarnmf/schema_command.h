// "tarnmf schema": the grammar of manifests for editors and other programs.
#ifndef TOOLS_TARNMF_SCHEMA_COMMAND_H
#define TOOLS_TARNMF_SCHEMA_COMMAND_H

namespace tool {

enum class SchemaForm { kRng, kXsd, kMarkdown };

// Returns the exit status.
int RunSchema(SchemaForm form);

}  // namespace tool

#endif  // TOOLS_TARNMF_SCHEMA_COMMAND_H
