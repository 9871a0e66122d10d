// The render library's 4x4 matrix in the row-vector convention: a point is multiplied from the
// left, so A * B applies A first, and a translation sits in the fourth row. Elements are
// reached as m[row][column] or _11 .. _44.
#pragma once

// The named elements overlay the array through an anonymous struct, a common compiler
// extension that the matrix type of the render library relies on; it is marked as such so that
// pedantic builds accept it.
#if defined(__GNUC__) || defined(__clang__)
#define QZ_ANONYMOUS_STRUCT __extension__
#else
#define QZ_ANONYMOUS_STRUCT
#endif
#if defined(__clang__)
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wnested-anon-types"
#endif

struct D3DXMATRIX
{
    union
    {
        QZ_ANONYMOUS_STRUCT struct
        {
            float _11, _12, _13, _14;
            float _21, _22, _23, _24;
            float _31, _32, _33, _34;
            float _41, _42, _43, _44;
        };
        float m[4][4];
    };
};

#if defined(__clang__)
#pragma clang diagnostic pop
#endif
#undef QZ_ANONYMOUS_STRUCT

// out = a * b; out may be a or b. Returns out.
D3DXMATRIX* D3DXMatrixMultiply(D3DXMATRIX* out, const D3DXMATRIX* a, const D3DXMATRIX* b);
D3DXMATRIX* D3DXMatrixIdentity(D3DXMATRIX* out);
D3DXMATRIX* D3DXMatrixTranslation(D3DXMATRIX* out, float x, float y, float z);
D3DXMATRIX* D3DXMatrixScaling(D3DXMATRIX* out, float sx, float sy, float sz);
// Rotations by an angle in radians; sine and cosine in single precision.
D3DXMATRIX* D3DXMatrixRotationX(D3DXMATRIX* out, float angle);
D3DXMATRIX* D3DXMatrixRotationY(D3DXMATRIX* out, float angle);
