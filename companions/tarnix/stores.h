// stores.h: internal interface of the common library, not visible outside.
#ifndef TARNIX_STORES_H
#define TARNIX_STORES_H

#pragma GCC visibility push(hidden)  // these names are no part of the library's boundary

namespace tarnix {

// Each empties the store of its topic, for TARNIX_CLEAR.
void forget_materials();
void forget_parameters();
void forget_assertions();
void forget_missing_libraries();

}  // namespace tarnix

#pragma GCC visibility pop

#endif
