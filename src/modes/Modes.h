#pragma once

// The program's ways to run, chosen in main() before any application object exists.
// Each returns the process exit status.

int runSelfTest(int argc, char** argv);                             // --self-test
int runEditingTest(int argc, char** argv);                          // --editing-test
int runResourceTest(int argc, char** argv);                         // --resource-test
int runPrintFixtures(int argc, char** argv, const char* outputDir); // --print-fixtures DIR
int runApplication(int argc, char** argv, bool preview);            // normal start, or --preview
