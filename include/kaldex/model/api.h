#ifndef KALDEX_MODEL_API_H
#define KALDEX_MODEL_API_H

// Export macro of the domain-model library. Exported names live in an inline namespace at global scope: callers write
// the plain name, while the symbols carry the version and collide with nobody's `Line` or `Image`.
//
//   inline namespace kaldex_v1 { class KALDEX_MODEL_API Line; }

#define KALDEX_VISIBLE __attribute__((visibility("default")))

#define KALDEX_MODEL_API KALDEX_VISIBLE

#endif
