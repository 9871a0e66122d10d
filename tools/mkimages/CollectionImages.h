// The images of the sample client's collections window (bag, quest tree, chat list).
#pragma once

void MakeCollectionImages();
