#include "shell/legacy_folder.h"

#include <cstdio>
#include <cstring>

#include "base/file_utils.h"

bool ReadFerryIni(std::string& folderOut) {
    FilePtr ini = OpenFile("ferry2.ini", "r");
    if (!ini) return false;
    char line[1024];
    if (!ReadTextLine(line, sizeof line, ini.get())) return false;
    folderOut = line;
    return true;
}

void WriteFerryIni(const std::string& folder) {
    FilePtr ini = OpenFile("ferry2.ini", "w");
    if (!ini) return;
    std::fputs(folder.c_str(), ini.get());
}

bool LegacyFolderProved(const std::string& folder) {
    const std::string proof = folder + "/charts.bin";
    return FileExists(proof.c_str());
}

int AcceptLegacyFolder(const std::string& folder, const JobHost& host) {
    const std::string text = folder.substr(0, 1023);
    if (!LegacyFolderProved(text)) {
        ShowJobMessage(host, kLegacyFolderMissingText, kFerryMessageTitle);
        return 0;
    }
    WriteFerryIni(text);
    return 1;
}
