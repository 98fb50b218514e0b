// SPDX-License-Identifier: MIT
// Decides whether a firmware file may go into the active reader. Versions are texts and are
// compared as texts. A refusal leaves its message in errorString.
#pragma once

#include <string>
#include <vector>

// Its virtual operations are these alone, in this order; never destroyed through a base.
class BootloadRules {
public:
    // Three bytes of a version word, each as a decimal number, joined: "148".
    virtual std::string getFirmwareVersion(short unit, short slot);
    virtual bool checkCurrentFwWithTargetCpu1BL(std::string newName);

    // The name without a revision: from its first '-' on, when what stands behind the last one is a
    // number.
    virtual std::string removeSVN(std::string name);
    virtual bool checkTKGRule(std::string newName);

    // The lines in front of "M0" or "M1".
    virtual std::vector<std::string> storeFile(std::string name);

    // Values of header lines; "" for a line that isn't there.
    virtual int getOvrValue(std::vector<std::string> lines);
    virtual std::string getPSValueForCurrentReader(std::vector<std::string> lines);
    virtual std::string getFWBLValueForCurrentReader(std::vector<std::string> lines);
    virtual std::string getCPU1AP1ValueForCurrentReader(std::vector<std::string> lines);
    virtual std::string getCPU1BL1ValueForCurrentReader(std::vector<std::string> lines);

    // Where the new firmware's section begins; -1 without one.
    virtual int getIndexNewFW(std::vector<std::string> lines);
    virtual std::string getPSValueForNewFW(std::vector<std::string> lines, int index);
    virtual std::string getFWBLValueForNewFW(std::vector<std::string> lines, int index);
    virtual std::string getFNValueForNewFW(std::vector<std::string> lines, int index);

    // Whether the reader's own firmware stands among the lines in front of the new one's.
    virtual bool getFNValueForReaderFW(std::vector<std::string> lines, int index);
    virtual bool checkCurrentFwWithTargetFw(std::string newName, int overrideNumber);
    virtual bool checkForTKATKBTKC(std::string ps, std::string newName, std::string current);
    virtual bool checkFor256KModels(std::string ps, std::string current);
    virtual bool checkForTKDTKE(std::string ps, std::string newName, std::string current);
    virtual bool checkForTKF(std::string newName, std::string current);
    virtual bool checkForCCID(std::string newName, std::string current);
    virtual bool checkSpecialFormatForTKG(std::string newName);
    virtual bool checkRule1(std::string newName, std::string ps);
    virtual bool checkFileTampered(const char* name);

    // 1 when the file may be flashed, else 0.
    virtual short checkRulesForBootload(const char* name);
};

// Whether every character is a decimal digit; so of no character too.
bool isNumber(const std::string& text);

std::string convertToUppercase(std::string text);
