#pragma once
// Library files are found like the drawing's other referenced files: by the path the drawing
// stores, then by their bare name along the host's reference search paths.
#include <vl_db/FileFinder.h>

namespace vl_app {

class FileFinder : public vl_db::FileFinder {
public:
    bool findFile(OdString& result, const wchar_t* fileName, OdDbDatabase* db) override;
};

}  // namespace vl_app
