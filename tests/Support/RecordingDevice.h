#pragma once

#include <algorithm>
#include <string>
#include <utility>

#include "Utils/U_Console/DumpingDevice.h"

namespace KM::Test {

/// Keeps each call that it gets, in order: operations as "{BoldB}" or "{FgColorB 12}", text as it is.
class RecordingDevice : public DumpingDevice {
public:
    using DumpingDevice::DumpingDevice;

    std::string journal;
    std::size_t longestWrite = 0;

    /// What has been kept since the last call.
    std::string Take() { return std::exchange(journal, std::string()); }

    void SetTitle(const std::string& title) override { Note("SetTitle " + title); }
    void BoldB() override { Note("BoldB"); }
    void BoldE() override { Note("BoldE"); }
    void ItalicB() override { Note("ItalicB"); }
    void ItalicE() override { Note("ItalicE"); }
    void UnderlineB() override { Note("UnderlineB"); }
    void UnderlineE() override { Note("UnderlineE"); }
    void StrikeB() override { Note("StrikeB"); }
    void StrikeE() override { Note("StrikeE"); }
    void SuperB() override { Note("SuperB"); }
    void SuperE() override { Note("SuperE"); }
    void SubB() override { Note("SubB"); }
    void SubE() override { Note("SubE"); }
    void HyperlinkB() override { Note("HyperlinkB"); }
    void HyperlinkE() override { Note("HyperlinkE"); }
    void AccoladeB() override { Note("AccoladeB"); }
    void AccoladeE() override { Note("AccoladeE"); }
    void SizeB(int size) override { Note("SizeB " + std::to_string(size)); }
    void SizeE() override { Note("SizeE"); }
    void FgColorB(int color) override { Note("FgColorB " + std::to_string(color)); }
    void FgColorE() override { Note("FgColorE"); }
    void BkColorB(int color) override { Note("BkColorB " + std::to_string(color)); }
    void BkColorE() override { Note("BkColorE"); }
    void Write(const std::string& text) override {
        longestWrite = std::max(longestWrite, text.size());
        journal += text;
    }
    void OnBegin() override { Note("OnBegin"); }
    void OnEnd() override { Note("OnEnd"); }
    void DumpAll(const std::string& file) override { Note("DumpAll " + file); }
    void Reset() override { Note("Reset"); }
    void ApplyBackground() override { Note("ApplyBackground"); }

private:
    void Note(const std::string& call) {
        journal += '{';
        journal += call;
        journal += '}';
    }
};

}  // namespace KM::Test
