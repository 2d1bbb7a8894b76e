# Draws docs/speed.svg. Arguments: a file with the output of `qzjexxml_bench --by-size`, and a title that names the
# commit.
set terminal svg size 960,440 background "white" font "sans-serif,13"
set multiplot layout 1,2 title ARG2
set logscale xy
set border 3
set xrange [800:1200000]
set xtics nomirror ("1,000" 1e3, "10,000" 1e4, "100,000" 1e5, "1,000,000" 1e6)
set ytics nomirror
unset mytics
set grid linetype 1 linecolor "#dddddd"
set xlabel "files in the manifest"
set key left top reverse Left samplen 2
set style data linespoints
set linetype 1 linecolor "#d55e00" linewidth 1.5 pointtype 9
set linetype 2 linecolor "#009e73" linewidth 1.5 pointtype 5
set linetype 3 linecolor "#0072b2" linewidth 4 pointtype 7
set linetype 4 linecolor "#8f4f8f" linewidth 1.5 pointtype 11
set linetype 5 linecolor "#666666" linewidth 1.5 pointtype 13
set ylabel "processor time, milliseconds"
plot for [reader=0:4] ARG1 index reader using 1:2 title columnheader(1)
set ylabel "peak memory, MiB"
plot for [reader=0:4] ARG1 index reader using 1:3 title columnheader(1)
