// Puts one movie into another as a sprite that plays from the first frame on. What comes stays as it is.
//
//     merge_movies INTO.swf FROM.swf OUT.swf

#include <iostream>

#include "vxswf.h"

int main(int argc, char** argv) {
    if (argc != 4) {
        std::cerr << "usage: merge_movies INTO.swf FROM.swf OUT.swf\n";
        return 2;
    }
    VXMovieIO files;
    VXWholeMovie into;
    VXMovieCombiner combiner(into);  // takes any number of movies, one after the other
    VXMovieCombiner::Options options;
    options.Name = "merged";
    options.Matrix.Translate(20.0, 10.0);  // above everything that the movie shows, unless `Depth` is given
    if (files.Load(into, argv[1]) != kVXSuccess || files.Combine(combiner, argv[2], options) != kVXSuccess ||
        files.Save(into, argv[3]) != kVXSuccess) {
        std::cerr << files.GetErrorText() << '\n';
        return 1;
    }
    return 0;
}
