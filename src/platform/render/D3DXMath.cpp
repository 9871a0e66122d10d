#include "platform/render/D3DXMath.h"

#include <cmath>

D3DXMATRIX* D3DXMatrixMultiply(D3DXMATRIX* out, const D3DXMATRIX* a, const D3DXMATRIX* b)
{
    // The product goes to a local first, so that out may be one of the factors.
    D3DXMATRIX product;
    for (int row = 0; row < 4; ++row)
    {
        for (int column = 0; column < 4; ++column)
        {
            float sum = 0.0f;
            for (int k = 0; k < 4; ++k)
                sum += a->m[row][k] * b->m[k][column];
            product.m[row][column] = sum;
        }
    }
    *out = product;
    return out;
}

D3DXMATRIX* D3DXMatrixIdentity(D3DXMATRIX* out)
{
    *out = D3DXMATRIX();
    for (int i = 0; i < 4; ++i)
        out->m[i][i] = 1.0f;
    return out;
}

D3DXMATRIX* D3DXMatrixTranslation(D3DXMATRIX* out, float x, float y, float z)
{
    D3DXMatrixIdentity(out);
    out->_41 = x;
    out->_42 = y;
    out->_43 = z;
    return out;
}

D3DXMATRIX* D3DXMatrixScaling(D3DXMATRIX* out, float sx, float sy, float sz)
{
    D3DXMatrixIdentity(out);
    out->_11 = sx;
    out->_22 = sy;
    out->_33 = sz;
    return out;
}

D3DXMATRIX* D3DXMatrixRotationX(D3DXMATRIX* out, float angle)
{
    const float sine = std::sin(angle);
    const float cosine = std::cos(angle);
    D3DXMatrixIdentity(out);
    out->_22 = cosine;
    out->_23 = sine;
    out->_32 = -sine;
    out->_33 = cosine;
    return out;
}

D3DXMATRIX* D3DXMatrixRotationY(D3DXMATRIX* out, float angle)
{
    const float sine = std::sin(angle);
    const float cosine = std::cos(angle);
    D3DXMatrixIdentity(out);
    out->_11 = cosine;
    out->_13 = -sine;
    out->_31 = sine;
    out->_33 = cosine;
    return out;
}
