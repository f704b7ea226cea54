// The icons and cursors that belong to the system.
#include "gdi/icon.h"
#include "gdi/stock_art.h"

#include <algorithm>

namespace vndk::win32 {

namespace {

constexpr int pictureSize = 32;

/// What is done to the rows before they become a picture.
enum class Finish {
    none,
    outlined,           // a white line around all that is black
    mirroredOutlined,   // left and right swapped, then outlined
    transposedOutlined, // rows and columns swapped, then outlined
};

struct StockPicture {
    int number;
    std::span<const std::string_view> rows;
    POINT hot{0, 0}; // within the rows
    Finish finish = Finish::none;
};

constexpr StockPicture stockCursors[] = {
    {32512, arrowCursor},
    {32513, beamCursor, {3, 8}},
    {32514, waitCursor, {6, 11}},
    {32515, crossCursor, {9, 9}},
    {32516, upCursor, {4, 0}, Finish::outlined},
    {32640, sizeAllCursor, {10, 10}, Finish::outlined},
    {32642, sizeDiagonalCursor, {6, 6}, Finish::outlined},
    {32643, sizeDiagonalCursor, {6, 6}, Finish::mirroredOutlined},
    {32644, sizeAcrossCursor, {9, 3}, Finish::outlined},
    {32645, sizeAcrossCursor, {3, 9}, Finish::transposedOutlined},
    {32646, sizeAllCursor, {10, 10}, Finish::outlined},
    {32648, noCursor, {10, 10}, Finish::outlined},
    {32649, handCursor, {5, 0}},
    {32650, startingCursor},
    {32651, helpCursor},
};

constexpr StockPicture stockIcons[] = {
    {32512, applicationIcon}, {32513, errorIcon},       {32514, questionIcon},
    {32515, warningIcon},     {32516, informationIcon}, {32517, applicationIcon},
};

using Grid = std::vector<std::string>;

Grid gridOf(std::span<const std::string_view> rows) {
    std::size_t width = 0;
    for (std::string_view row : rows)
        width = std::max(width, row.size());
    Grid grid;
    for (std::string_view row : rows)
        grid.emplace_back(row).resize(width, ' ');
    return grid;
}

Grid transposed(const Grid& grid) {
    Grid result(grid.front().size(), std::string(grid.size(), ' '));
    for (std::size_t y = 0; y < grid.size(); ++y)
        for (std::size_t x = 0; x < grid[y].size(); ++x)
            result[x][y] = grid[y][x];
    return result;
}

/// One pixel larger on each side.
Grid outlined(const Grid& grid) {
    const std::size_t width = grid.front().size();
    Grid result(grid.size() + 2, std::string(width + 2, ' '));
    for (std::size_t y = 0; y < grid.size(); ++y)
        for (std::size_t x = 0; x < width; ++x)
            if (grid[y][x] == '#')
                for (std::size_t row = y; row <= y + 2; ++row)
                    result[row].replace(x, 3, 3, '.');
    for (std::size_t y = 0; y < grid.size(); ++y)
        for (std::size_t x = 0; x < width; ++x)
            if (grid[y][x] != ' ')
                result[y + 1][x + 1] = grid[y][x];
    return result;
}

Grid finished(const StockPicture& stock, POINT& hot) {
    Grid grid = gridOf(stock.rows);
    if (stock.finish == Finish::mirroredOutlined)
        for (std::string& row : grid)
            std::reverse(row.begin(), row.end());
    if (stock.finish == Finish::transposedOutlined)
        grid = transposed(grid);
    hot = stock.hot;
    if (stock.finish != Finish::none) {
        grid = outlined(grid);
        ++hot.x;
        ++hot.y;
    }
    return grid;
}

std::uint32_t colorOf(char cell) {
    switch (cell) {
    case '.':
    case '*':
        return 0xFFFFFF;
    case 'r':
        return 0xFF0000;
    case 'R':
        return 0x800000;
    case 'y':
        return 0xFFFF00;
    case 'b':
        return 0x0000FF;
    case 'B':
        return 0x000080;
    case 'g':
        return 0xC0C0C0;
    default:
        return 0x000000;
    }
}

IconImage pictureOf(const StockPicture& stock, bool cursor) {
    IconImage image = IconImage::blank(pictureSize, pictureSize);
    const Grid grid = finished(stock, image.hot);
    for (std::size_t y = 0; y < grid.size(); ++y) {
        for (std::size_t x = 0; x < grid[y].size(); ++x) {
            const std::size_t index = image.index(static_cast<int>(x), static_cast<int>(y));
            const char cell = grid[y][x];
            image.pixels[index] = colorOf(cell);
            image.mask[index] = cell == ' ' || cell == '*' ? 1 : 0;
        }
    }
    image.cursor = cursor;
    image.colored = !cursor;
    if (!cursor)
        image.hot = {pictureSize / 2, pictureSize / 2};
    return image;
}

} // namespace

std::optional<IconImage> stockPicture(int number, bool cursor) {
    const std::span<const StockPicture> pictures =
        cursor ? std::span<const StockPicture>(stockCursors) : std::span<const StockPicture>(stockIcons);
    const auto found = std::find_if(pictures.begin(), pictures.end(),
                                    [=](const StockPicture& stock) { return stock.number == number; });
    return found != pictures.end() ? std::optional(pictureOf(*found, cursor)) : std::nullopt;
}

} // namespace vndk::win32
