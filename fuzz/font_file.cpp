// ini/font.ini of any bytes: the face name read for the edit boxes' system windows (the first
// word of the first line, cut to its buffer), the edit font made from it, and the face the edit
// box draws with.
#include "FuzzSupport.h"

#include "textinput/QzEdit.h"
#include "textinput/QzEditSingle.h"
#include "textinput/QzFontIni.h"

namespace
{

constexpr size_t kFaceBytes = 260;

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    QzFuzz::Setup();
    QzFuzz::WriteFile("ini/Gui3DEffect.ini", "");
    QzFuzz::WriteFile("ini/Fuzz.ini", "[0-1]\nx=0\ny=0\nw=100\nh=100\n");
    QzFuzz::SetupHost();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    QzFuzz::WriteFile("ini/font.ini", data, size);
    char szFace[kFaceBytes];
    QzGui::ReadFontIniFace(szFace, sizeof(szFace), "fuzz", __LINE__);
    QzFuzz::CFuzzScreen screen;
    QzGui::CQzEditSingle::ForgetFontFace();
    QzGui::CQzEdit::ForgetFontName();
    if (QzGui::g_pQzEditSingle)
        (void)QzGui::g_pQzEditSingle->GetEditFont();
    QzGui::CQzEdit edit;
    (void)edit.GetFontName();
    return 0;
}
