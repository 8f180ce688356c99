#pragma once

#include <cups/cups.h>
#include <cups/ppd.h>
#include <cups/pwg.h>

/**
 * The print system's library (CUPS), loaded when something is printed for the first time.
 *
 * It is not linked: with its own libraries it would cost every start of the program some milliseconds and
 * megabytes, for a thing that most days nobody asks for. Types and names come from its headers, so a function
 * that is called wrongly does not compile. This table is the only door to it; Qt's printing plug-in loads the
 * same copy.
 */
struct BibliotecaCups {
    /// The table; nullptr where the library is not installed or lacks a function.
    static const BibliotecaCups *Obter();

    decltype(&::cupsServer) Server;
    decltype(&::ippPort) Port;
    decltype(&::cupsEncryption) Encryption;
    decltype(&::httpConnect2) HttpConnect2;
    decltype(&::httpSetTimeout) HttpSetTimeout;
    decltype(&::httpClose) HttpClose;
    decltype(&::httpAssembleURIf) HttpAssembleURIf;

    decltype(&::ippNewRequest) NewRequest;
    decltype(&::ippDelete) Delete;
    decltype(&::ippAddString) AddString;
    decltype(&::ippAddStrings) AddStrings;
    decltype(&::ippFirstAttribute) FirstAttribute;
    decltype(&::ippNextAttribute) NextAttribute;
    decltype(&::ippGetName) GetName;
    decltype(&::ippGetValueTag) GetValueTag;
    decltype(&::ippGetInteger) GetInteger;
    decltype(&::ippGetStatusCode) GetStatusCode;
    decltype(&::ippAttributeString) AttributeString;
    decltype(&::cupsDoRequest) DoRequest;
    decltype(&::cupsLastError) LastError;

    decltype(&::cupsGetDests2) GetDests2;
    decltype(&::cupsGetNamedDest) GetNamedDest;
    decltype(&::cupsFreeDests) FreeDests;
    decltype(&::cupsGetDefault2) GetDefault2;
    decltype(&::cupsAddOption) AddOption;
    decltype(&::cupsFreeOptions) FreeOptions;
    decltype(&::cupsCreateJob) CreateJob;
    decltype(&::cupsStartDocument) StartDocument;
    decltype(&::cupsWriteRequestData) WriteRequestData;
    decltype(&::cupsFinishDocument) FinishDocument;
    decltype(&::cupsCancelJob2) CancelJob2;

    // The library announces that it will part with printer descriptions; the queues of today have them.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
    decltype(&::cupsGetPPD2) GetPPD2;
    decltype(&::ppdOpenFile) PpdOpenFile;
    decltype(&::ppdClose) PpdClose;
    decltype(&::ppdMarkDefaults) PpdMarkDefaults;
    decltype(&::cupsMarkOptions) MarkOptions;
    decltype(&::ppdFindOption) PpdFindOption;
    decltype(&::ppdFindMarkedChoice) PpdFindMarkedChoice;
#pragma GCC diagnostic pop
    decltype(&::pwgMediaForPWG) MediaForPWG;
    decltype(&::pwgMediaForLegacy) MediaForLegacy;
    decltype(&::pwgMediaForPPD) MediaForPPD;
};
