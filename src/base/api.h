#ifndef KALDEX_BASE_API_H
#define KALDEX_BASE_API_H

#define KALDEX_BASE_API __attribute__((visibility("default")))

#endif
