#ifndef KALDEX_API_H
#define KALDEX_API_H

// Export macro of the interchange library; see kaldex/model/api.h for the namespace rule.
#define KALDEX_API __attribute__((visibility("default")))

#endif
