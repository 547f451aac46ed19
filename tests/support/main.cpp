#include <gtest/gtest.h>

#include <QCoreApplication>
#include <clocale>
#include <cstdio>
#include <cstdlib>

// Takes the locale of the environment, as a desktop application does, before any test runs. A locale that the
// machine doesn't have would quietly leave the C locale in force and turn the decimal-comma run into a second
// plain one.
int main(int argc, char** argv) {
  if (std::setlocale(LC_ALL, "") == nullptr) {
    const char* asked = std::getenv("LC_ALL");
    std::fprintf(stderr, "The locale \"%s\" is not installed; see localedef(1).\n",
                 asked != nullptr ? asked : "");
    return EXIT_FAILURE;
  }
  QCoreApplication application(argc, argv);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
