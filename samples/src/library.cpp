// A library of the sample installations: small, but real enough to be resolved and loaded.
#if defined(_WIN32)
#define SAMPLE_API __declspec(dllexport)
#else
#define SAMPLE_API __attribute__((visibility("default")))
#endif

extern "C" SAMPLE_API const char* SampleModuleId() {
  return SAMPLE_MODULE_ID;
}
