#include "platform/render/MyBitmapImage.h"

#include "platform/services/QzLog.h"
#include "platform/system/kernel/QzPathResolve.h"

namespace QzPlatform
{

C3_SIZE CMyBitmapImage::GetSize() const
{
    const SizeI size = m_texture.GetSize();
    return C3_SIZE{size.cx, size.cy};
}

BOOL CMyBitmapImage::ShowImage(int x, int y, int, int width, int height, uint8_t alpha, int, int,
                               float scale)
{
    const SizeI size = m_texture.GetSize();
    if (size.cx <= 0 || size.cy <= 0)
        return FALSE;
    RectI source;
    source.right = size.cx;
    source.bottom = size.cy;
    GetRenderDevice().DrawTexture(m_texture.GetId(), source, x, y, width > 0 ? width : size.cx,
                                  height > 0 ? height : size.cy, alpha, scale);
    return TRUE;
}

} // namespace QzPlatform

IMyBitmap* MyBitmapCreate(const char* file)
{
    if (!file)
        return nullptr;
    auto* pImage = new QzPlatform::CMyBitmapImage(QzPlatform::ResolvePath(file));
    if (pImage->IsLoaded())
        return pImage;
    pImage->Release();
    QzPlatform::LogEvent("open file failed", "MyBitmap", __LINE__,
                         {QzPlatform::LogText("file_name", file)});
    return nullptr;
}
