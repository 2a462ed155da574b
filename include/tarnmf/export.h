/// @file
/// Marks what the tarnmf library exports.
#ifndef TARNMF_EXPORT_H
#define TARNMF_EXPORT_H

/// @def TARNMF_API
/// Stands in front of what the library exports.
#if defined(_WIN32)
#if defined(TARNMF_BUILDING)
#define TARNMF_API __declspec(dllexport)
#else
#define TARNMF_API __declspec(dllimport)
#endif
#else
#define TARNMF_API __attribute__((visibility("default")))
#endif

#endif  // TARNMF_EXPORT_H
