# Two pictures side by side: CPU against directives, CPU against printers at once.
# Takes: folder (the measured points), target (the SVG file).
set terminal svg size 960,400 font 'sans-serif,12' background 'white'
set output target
set multiplot layout 1,2
set key top left
set grid
set xrange [0:*]
set yrange [0:*]

set title 'One job with many directives'
set xlabel '"ReportStatus" directives'
set ylabel 'CPU of the job, ms'
plot folder.'/directives.dat' using 1:4 with linespoints pt 7 ps 0.5 title 'dumps in pieces', \
     '' using 1:2 with linespoints pt 7 ps 0.5 title 'the filter', \
     '' using 1:3 with linespoints pt 7 ps 0.5 title 'floor'

set title 'Many filters at once, each with its printer'
set xlabel 'printers'
set ylabel 'CPU of all jobs, ms'
plot folder.'/printers.dat' using 1:2 with linespoints pt 7 ps 0.5 lt 2 title 'the filter', \
     '' using 1:3 with linespoints pt 7 ps 0.5 lt 3 title 'floor'
unset multiplot
