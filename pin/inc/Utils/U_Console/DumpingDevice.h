#pragma once

#include <string>

#include "KmApi.h"

namespace KM {

/// Where the log goes: an abstract output with bold, colour and hyperlink operations, driven by the codes in a line.
///
/// All codes begin and end with a backquote: `B` `I` `U` `H` `A` switch bold, italic, underline, hyperlink and accolade
/// on and off in turn; `T` `S` `s` are strike, superscript and subscript; C12, c12 and Z12 begin a foreground colour, a
/// background colour and a size, and the bare letter ends it. A colour is a number of four bits, BRGB from high to low.
///
/// The virtual operations stand in this order; all but the last two do nothing in this class.
class KM_API DumpingDevice {
public:
    explicit DumpingDevice(bool darkBackground = true) : darkBackground_(darkBackground ? -1 : 0) {}
    DumpingDevice(const DumpingDevice&) = default;
    DumpingDevice& operator=(const DumpingDevice&) = default;
    virtual ~DumpingDevice();

    virtual void SetTitle(const std::string& title);
    virtual void BoldB();
    virtual void BoldE();
    virtual void ItalicB();
    virtual void ItalicE();
    virtual void UnderlineB();
    virtual void UnderlineE();
    virtual void StrikeB();
    virtual void StrikeE();
    virtual void SuperB();
    virtual void SuperE();
    virtual void SubB();
    virtual void SubE();
    virtual void HyperlinkB();
    virtual void HyperlinkE();
    virtual void AccoladeB();
    virtual void AccoladeE();
    virtual void SizeB(int size);
    virtual void SizeE();
    virtual void FgColorB(int color);
    virtual void FgColorE();
    virtual void BkColorB(int color);
    virtual void BkColorE();
    /// Takes plain text, usually one byte a call.
    virtual void Write(const std::string& text);
    /// Encloses each line together with `OnEnd`.
    virtual void OnBegin();
    virtual void OnEnd();
    /// Copies what the device holds to a file.
    virtual void DumpAll(const std::string& file);
    /// Clears the device and starts afresh.
    virtual void Reset() = 0;
    /// Puts the background colour that the device stands for.
    virtual void ApplyBackground() = 0;

    /// On a light background, replaces a colour by one that is readable there; on a dark one leaves it.
    void AnalyzeColor(int& color) const;
    /// Writes the whole log again, as it was recorded, through the present formatter.
    void Redraw();
    /// Forgets the whole log and clears the device.
    void CLS();
    /// Redraws when this changes something.
    void EnableDarkBackground(bool dark);
    bool IsDarkBackground() const { return darkBackground_ != 0; }

private:
    int darkBackground_;
};

}  // namespace KM
